// The device-model framework's main factory, seen from outside.
#pragma once

#include <optional>

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"
#include "runtime/device_model/ADMIOProvider.h"
#include "runtime/device_model/ADMServiceInfo.h"
#include "runtime/device_model/ADMStatusFactory.h"

namespace commandfilter {

/// The class named "ADMCoreFactory" of the framework. The framework may be missing; finding this
/// class is the test for it. Each operation calls the class method of its name, and gives nil when
/// the class has none, too.
class COMMANDFILTER_EXPORT ADMCoreFactory {
 public:
  /// The framework's class; none when the framework is missing.
  [[nodiscard]] static std::optional<ADMCoreFactory> find();

  /// A new factory for device-ID services; nil when the framework offers none.
  [[nodiscard]] RefPtr<ADMDeviceIDServiceFactory> newDeviceIDServiceFactory() const;
  /// A new, unresolved service info for the device that the URI names, reached through the I/O
  /// provider; nil when the framework cannot make one.
  [[nodiscard]] RefPtr<ADMServiceInfo> newServiceInfoWithURI_ioProvider(
      const String& uri, const ADMIOProvider& ioProvider) const;
  /// The same with the framework's own transports, for a device of a class such as
  /// `kPrinterDeviceClass`.
  [[nodiscard]] RefPtr<ADMServiceInfo> newServiceInfoWithURI_deviceClass(
      const String& uri, const String& deviceClass) const;
  /// A new factory for status services; nil when the framework offers none.
  [[nodiscard]] RefPtr<ADMStatusFactory> newStatusFactory() const;

 private:
  explicit ADMCoreFactory(const Class& info) noexcept : class_(&info) {}
  const Class* class_;
};

}  // namespace commandfilter
