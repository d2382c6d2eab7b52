// The service of the device's supplies.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Makes the service named "DMFSuppliesStatus"; a class without instances.
struct COMMANDFILTER_EXPORT ADMDMFSuppliesStatusServiceFactory {
  static const Class kClass;

  /// The framework's object that conforms to `ADMSuppliesStatus`, for the device; nil when the
  /// framework is missing or has none.
  [[nodiscard]] static Value statusServiceForDMFServiceInfo(const Value& serviceInfo);
};

}  // namespace commandfilter
