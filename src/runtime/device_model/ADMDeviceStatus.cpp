#include "runtime/device_model/ADMDeviceStatus.h"

#include <array>

namespace commandfilter {

namespace {

constexpr std::array kRows{
    method<&ADMDeviceStatus::deviceState>("deviceState"),
    method<&ADMDeviceStatus::batteryLevel>("batteryLevel"),
    method<&ADMDeviceStatus::batteryCondition>("batteryCondition"),
    method<&ADMDeviceStatus::batteryLevelTrigger>("batteryLevelTrigger"),
    method<&ADMDeviceStatus::deviceSerialNumber>("deviceSerialNumber"),
    method<&ADMDeviceStatus::firmwareVersion>("firmwareVersion"),
    method<&ADMDeviceStatus::deviceSubstate>("deviceSubstate"),
    method<&ADMDeviceStatus::isDuplexerInstalled>("isDuplexerInstalled"),
    method<&ADMDeviceStatus::supportedResolutions>("supportedResolutions"),
    method<&ADMDeviceStatus::reserveModeState>("reserveModeState"),
    method<&ADMDeviceStatus::humanReadableModelName>("humanReadableModelName"),
    method<&ADMDeviceStatus::productNumber>("productNumber"),
    method<&ADMDeviceStatus::regionCode>("regionCode"),
    method<&ADMDeviceStatus::printheadAlignmentState>("printheadAlignmentState"),
    method<&ADMDeviceStatus::bbcMediaState>("bbcMediaState"),
    method<&ADMDeviceStatus::photoTrayState>("photoTrayState"),
    method<&ADMDeviceStatus::diaperState>("diaperState"),
    method<&ADMDeviceStatus::loidSensorState>("loidSensorState"),
    method<&ADMDeviceStatus::cameraState>("cameraState"),
    method<&ADMDeviceStatus::photoCardState>("photoCardState"),
    method<&ADMDeviceStatus::photoProofSheetState>("photoProofSheetState"),
    method<&ADMDeviceStatus::scannerState>("scannerState"),
    method<&ADMDeviceStatus::faxState>("faxState"),
    method<&ADMDeviceStatus::deviceUIState>("deviceUIState"),
};

constexpr std::array<const Protocol*, 1> kAdopts{&ADMStatus::kProtocol};

}  // namespace

constinit const Protocol ADMDeviceStatus::kProtocol{"ADMDeviceStatus", kAdopts};
constinit const MethodGroup ADMDeviceStatus::kMethods{"ADMDeviceStatus", kRows};

}  // namespace commandfilter
