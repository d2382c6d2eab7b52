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

}  // namespace commandfilter
