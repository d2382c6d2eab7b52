// The framework's class for device IDs.
#pragma once

#include <utility>

#include "device_model/DeviceID.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMDeviceIDInterpreter.h"

namespace commandfilter {

/// Found under the name "ADMDeviceIDInterpreter".
class DeviceIDInterpreter final : public Implements<Object, ADMDeviceIDInterpreter> {
 public:
  static const Class kClass;

  /// nil for a nil ID.
  [[nodiscard]] static RefPtr<DeviceIDInterpreter> initWithDeviceIDString(const String* deviceID);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] RefPtr<Array> languages() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit DeviceIDInterpreter(DeviceID deviceID) : deviceID_(std::move(deviceID)) {}
  ~DeviceIDInterpreter() override = default;

  DeviceID deviceID_;
};

}  // namespace commandfilter
