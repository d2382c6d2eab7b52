// The service of what the model can do.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Makes the service named "CapabilitiesInfoProvider"; a class without instances.
struct COMMANDFILTER_EXPORT ADMCapabilitiesInfoProviderServiceFactory {
  static const Class kClass;

  /// A new `ADMCapabilitiesInfoProviderServiceAdapter` for the device.
  [[nodiscard]] static Value statusServiceForDMFServiceInfo(const Value& serviceInfo);
};

}  // namespace commandfilter
