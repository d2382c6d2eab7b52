// What a model can do.
#pragma once

#include "runtime/Export.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The framework's class named "ADMCapabilitiesInfoProvider". Its instances answer messages without
/// arguments, one for each capability, such as `suppliesPlatformCode` and `supportedSupplies`; each
/// gives an object or nil.
struct COMMANDFILTER_EXPORT ADMCapabilitiesInfoProvider {
  /// A provider for the device, made with the class's initialiser of that name; nil when the
  /// framework has no such class or it refuses.
  [[nodiscard]] static Value initWithServiceInfo(const Value& serviceInfo);
};

}  // namespace commandfilter
