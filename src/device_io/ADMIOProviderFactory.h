// Makes I/O providers.
#pragma once

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMIOProvider.h"

namespace commandfilter {

/// Decides how a device is reached. There are no instances.
class ADMIOProviderFactory final : public Object {
 public:
  static const Class kClass;

  ADMIOProviderFactory() = delete;

  /// A new I/O provider for a device that is reached over the side channel; nil for a nil URI and
  /// for every other device, which the framework then reaches with its own transports.
  [[nodiscard]] static RefPtr<ADMIOProvider> newIOProviderForDeviceURI(const String* uri);
};

}  // namespace commandfilter
