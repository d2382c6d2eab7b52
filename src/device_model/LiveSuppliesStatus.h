// The supplies of a real device.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "device_model/LiveStatusService.h"
#include "device_model/Supply.h"
#include "runtime/Class.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMSuppliesManagement.h"
#include "runtime/device_model/ADMSuppliesStatus.h"

namespace commandfilter {

/// Asks the device's SNMP agent for its Printer MIB; when there is none, the queue's marker
/// attributes, which the scheduler keeps from the backend.
class LiveSuppliesStatus final
    : public LiveStatusService<ADMSuppliesStatus, ADMSuppliesManagement> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<LiveSuppliesStatus> create(LiveServiceInfo& device);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  void scheduleInRunLoop_forMode(RunLoop* /*runLoop*/, const String* /*mode*/) override {}
  void removeFromRunLoop_forMode(RunLoop* /*runLoop*/, const String* /*mode*/) override {}
  [[nodiscard]] Value lastError() override;

  [[nodiscard]] Value suppliesIdentifiers() override;
  [[nodiscard]] Value supplyNameForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyDescriptionForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyStateForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyLevelForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyCapacityForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyRemainingPagesForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyClassForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyMeasurementUnitForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyTypeForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyColorNameForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyRGBRepresentationForIdentifier(const Value& identifier) override;
  [[nodiscard]] Value supplyAdditionalInkLevelInfoForIdentifier(const Value& identifier) override;
  /// Who told about the supply: `device`, or `queue` for what the scheduler keeps, which is as old
  /// as the queue's last job.
  [[nodiscard]] Value supplySourceForIdentifier(const Value& identifier);

 protected:
  [[nodiscard]] Ref<Dictionary> features() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  explicit LiveSuppliesStatus(Ref<LiveServiceInfo> device) : LiveStatusService(std::move(device)) {}
  ~LiveSuppliesStatus() override = default;

  const std::vector<Supply>& supplies();
  /// nullptr for an identifier that no supply has.
  const Supply* supply(const Value& identifier);
  Value text(const Value& identifier, std::string Supply::*member);

  std::optional<std::vector<Supply>> supplies_;
  bool fromQueue_ = false;
  /// The supplies by their identifiers, which each of many is asked for again and again.
  std::unordered_map<std::string_view, const Supply*> byIdentifier_;
};

}  // namespace commandfilter
