#include "runtime/device_model/ADMSuppliesStatus.h"

#include <array>

#include "runtime/device_model/ADMSuppliesManagement.h"

namespace commandfilter {

namespace {

constexpr std::array kRows{
    method<&ADMSuppliesStatus::warrantyValue>("warrantyValue"),
    method<&ADMSuppliesStatus::suppliesIdentifiers>("suppliesIdentifiers"),
    method<&ADMSuppliesStatus::supplyNameForIdentifier>("supplyNameForIdentifier:"),
    method<&ADMSuppliesStatus::supplyDescriptionForIdentifier>("supplyDescriptionForIdentifier:"),
    method<&ADMSuppliesStatus::supplyPartNumberForIdentifier>("supplyPartNumberForIdentifier:"),
    method<&ADMSuppliesStatus::supplySelectabilityForIdentifier>(
        "supplySelectabilityForIdentifier:"),
    method<&ADMSuppliesStatus::supplyStateForIdentifier>("supplyStateForIdentifier:"),
    method<&ADMSuppliesStatus::supplyAuthenticationForIdentifier>(
        "supplyAuthenticationForIdentifier:"),
    method<&ADMSuppliesStatus::supplyLevelForIdentifier>("supplyLevelForIdentifier:"),
    method<&ADMSuppliesStatus::supplyCapacityForIdentifier>("supplyCapacityForIdentifier:"),
    method<&ADMSuppliesStatus::supplyRemainingPagesForIdentifier>(
        "supplyRemainingPagesForIdentifier:"),
    method<&ADMSuppliesStatus::supplyExpirationDateForIdentifier>(
        "supplyExpirationDateForIdentifier:"),
    method<&ADMSuppliesStatus::supplyClassForIdentifier>("supplyClassForIdentifier:"),
    method<&ADMSuppliesStatus::supplyMeasurementUnitForIdentifier>(
        "supplyMeasurementUnitForIdentifier:"),
    method<&ADMSuppliesStatus::supplyTypeForIdentifier>("supplyTypeForIdentifier:"),
    method<&ADMSuppliesStatus::supplyColorNameForIdentifier>("supplyColorNameForIdentifier:"),
    method<&ADMSuppliesStatus::supplyRGBRepresentationForIdentifier>(
        "supplyRGBRepresentationForIdentifier:"),
    method<&ADMSuppliesStatus::supplyDropVolumeForIdentifier>("supplyDropVolumeForIdentifier:"),
    method<&ADMSuppliesStatus::supplySubstateForIdentifier>("supplySubstateForIdentifier:"),
    method<&ADMSuppliesStatus::supplyExpectedColorNameForIdentifier>(
        "supplyExpectedColorNameForIdentifier:"),
    method<&ADMSuppliesStatus::supplyAdditionalInkLevelInfoForIdentifier>(
        "supplyAdditionalInkLevelInfoForIdentifier:"),
    method<&ADMSuppliesStatus::isIntroSupplyForIdentifier>("isIntroSupplyForIdentifier:"),
    method<&ADMSuppliesStatus::supplyLevelMessagingStyleForIdentifier>(
        "supplyLevelMessagingStyleForIdentifier:"),
};

constexpr std::array<const Protocol*, 2> kAdopts{&ADMStatus::kProtocol,
                                                 &ADMSuppliesManagement::kProtocol};

}  // namespace

constinit const Protocol ADMSuppliesStatus::kProtocol{"ADMSuppliesStatus", kAdopts};
constinit const MethodGroup ADMSuppliesStatus::kMethods{"ADMSuppliesStatus", kRows};

Value ADMSuppliesStatus::warrantyValue() { return {}; }
Value ADMSuppliesStatus::suppliesIdentifiers() { return {}; }
Value ADMSuppliesStatus::supplyNameForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyDescriptionForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyPartNumberForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplySelectabilityForIdentifier(const Value& /*identifier*/) {
  return {};
}
Value ADMSuppliesStatus::supplyStateForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyAuthenticationForIdentifier(const Value& /*identifier*/) {
  return {};
}
Value ADMSuppliesStatus::supplyLevelForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyCapacityForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyRemainingPagesForIdentifier(const Value& /*identifier*/) {
  return {};
}
Value ADMSuppliesStatus::supplyExpirationDateForIdentifier(const Value& /*identifier*/) {
  return {};
}
Value ADMSuppliesStatus::supplyClassForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyMeasurementUnitForIdentifier(const Value& /*identifier*/) {
  return {};
}
Value ADMSuppliesStatus::supplyTypeForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyColorNameForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyRGBRepresentationForIdentifier(const Value& /*identifier*/) {
  return {};
}
Value ADMSuppliesStatus::supplyDropVolumeForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplySubstateForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyExpectedColorNameForIdentifier(const Value& /*identifier*/) {
  return {};
}
Value ADMSuppliesStatus::supplyAdditionalInkLevelInfoForIdentifier(const Value& /*identifier*/) {
  return {};
}
Value ADMSuppliesStatus::isIntroSupplyForIdentifier(const Value& /*identifier*/) { return {}; }
Value ADMSuppliesStatus::supplyLevelMessagingStyleForIdentifier(const Value& /*identifier*/) {
  return {};
}

}  // namespace commandfilter
