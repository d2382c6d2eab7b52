// The device status of a real device.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "device_model/LiveStatusService.h"
#include "runtime/Class.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMDeviceStatus.h"

namespace commandfilter {

/// Asks the device's SNMP agent; what it does not tell comes from the device ID, the device URI and
/// the queue's attributes.
class LiveDeviceStatus final : public LiveStatusService<ADMDeviceStatus> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<LiveDeviceStatus> create(LiveServiceInfo& device);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Value deviceState() override;
  [[nodiscard]] Value deviceSubstate() override;
  [[nodiscard]] Value deviceSerialNumber() override;
  [[nodiscard]] Value firmwareVersion() override;
  [[nodiscard]] Value humanReadableModelName() override;
  [[nodiscard]] Value isDuplexerInstalled() override;
  [[nodiscard]] Value supportedResolutions() override;
  [[nodiscard]] Value deviceUIState() override;

 protected:
  [[nodiscard]] Ref<Dictionary> features() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  explicit LiveDeviceStatus(Ref<LiveServiceInfo> device) : LiveStatusService(std::move(device)) {}
  ~LiveDeviceStatus() override = default;

  /// The answer of the function, which is called once.
  template <typename Function>
  const Value& once(std::optional<Value>& answer, Function&& function) {
    if (!answer) answer.emplace(function());
    return *answer;
  }
  [[nodiscard]] Value pageCount() const;
  /// The feature "state".
  [[nodiscard]] Ref<Dictionary> stateFeature();

  std::optional<Value> state_;
  std::optional<Value> substate_;
  /// Who told the substate: `device`, `queue`, or empty when nobody did.
  std::string_view substateSource_;
  std::optional<Value> serialNumber_;
  std::optional<Value> display_;
  std::optional<Value> duplexer_;
};

}  // namespace commandfilter
