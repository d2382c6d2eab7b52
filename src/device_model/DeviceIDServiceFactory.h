// Device IDs of the module's devices.
#pragma once

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"

namespace commandfilter {

/// Makes providers that ask the device for its ID.
class DeviceIDServiceFactory final : public Implements<Object, ADMDeviceIDServiceFactory> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<DeviceIDServiceFactory> create() {
    return make<DeviceIDServiceFactory>();
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// nil for a service info that is not of this module.
  [[nodiscard]] RefPtr<ADMDeviceIDAccessProvider> deviceIDAccessProviderForServiceInfo(
      const Value& serviceInfo) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  DeviceIDServiceFactory() = default;
  ~DeviceIDServiceFactory() override = default;
};

}  // namespace commandfilter
