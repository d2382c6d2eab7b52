// The device ID of one of the module's devices.
#pragma once

#include <utility>

#include "device_model/DeviceServiceInfo.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"

namespace commandfilter {

/// Asks the device.
class DeviceIDAccessProvider final : public Implements<Object, ADMDeviceIDAccessProvider> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<DeviceIDAccessProvider> create(DeviceServiceInfo& device) {
    return make<DeviceIDAccessProvider>(Ref<DeviceServiceInfo>(device));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] RefPtr<String> deviceID() override { return device_->deviceID(); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit DeviceIDAccessProvider(Ref<DeviceServiceInfo> device) : device_(std::move(device)) {}
  ~DeviceIDAccessProvider() override = default;

  Ref<DeviceServiceInfo> device_;
};

}  // namespace commandfilter
