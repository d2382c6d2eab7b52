// The service of the device's own status.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Makes the service named "DMFDeviceStatus"; a class without instances.
struct COMMANDFILTER_EXPORT ADMDMFDeviceStatusServiceFactory {
  static const Class kClass;

  /// The framework's object that conforms to `ADMDeviceStatus`, for the device; nil when the
  /// framework is missing or has none.
  [[nodiscard]] static Value statusServiceForDMFServiceInfo(const Value& serviceInfo);
};

}  // namespace commandfilter
