// The device-model framework's main factory, seen from outside.
#pragma once

#include <optional>

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"

namespace commandfilter {

/// The class named "ADMCoreFactory" of the framework. The framework may be missing; finding this
/// class is the test for it.
class COMMANDFILTER_EXPORT ADMCoreFactory {
 public:
  /// The framework's class; none when the framework is missing.
  [[nodiscard]] static std::optional<ADMCoreFactory> find();

  /// A new factory for device-ID services, from the class method of that name; nil when the
  /// framework offers none.
  [[nodiscard]] RefPtr<ADMDeviceIDServiceFactory> newDeviceIDServiceFactory() const;

 private:
  explicit ADMCoreFactory(const Class& info) noexcept : class_(&info) {}
  const Class* class_;
};

}  // namespace commandfilter
