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

Value ADMDeviceStatus::deviceState() { return {}; }
Value ADMDeviceStatus::batteryLevel() { return {}; }
Value ADMDeviceStatus::batteryCondition() { return {}; }
Value ADMDeviceStatus::batteryLevelTrigger() { return {}; }
Value ADMDeviceStatus::deviceSerialNumber() { return {}; }
Value ADMDeviceStatus::firmwareVersion() { return {}; }
Value ADMDeviceStatus::deviceSubstate() { return {}; }
Value ADMDeviceStatus::isDuplexerInstalled() { return {}; }
Value ADMDeviceStatus::supportedResolutions() { return {}; }
Value ADMDeviceStatus::reserveModeState() { return {}; }
Value ADMDeviceStatus::humanReadableModelName() { return {}; }
Value ADMDeviceStatus::productNumber() { return {}; }
Value ADMDeviceStatus::regionCode() { return {}; }
Value ADMDeviceStatus::printheadAlignmentState() { return {}; }
Value ADMDeviceStatus::bbcMediaState() { return {}; }
Value ADMDeviceStatus::photoTrayState() { return {}; }
Value ADMDeviceStatus::diaperState() { return {}; }
Value ADMDeviceStatus::loidSensorState() { return {}; }
Value ADMDeviceStatus::cameraState() { return {}; }
Value ADMDeviceStatus::photoCardState() { return {}; }
Value ADMDeviceStatus::photoProofSheetState() { return {}; }
Value ADMDeviceStatus::scannerState() { return {}; }
Value ADMDeviceStatus::faxState() { return {}; }
Value ADMDeviceStatus::deviceUIState() { return {}; }

}  // namespace commandfilter
