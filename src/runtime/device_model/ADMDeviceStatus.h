// The status of the device itself.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"
#include "runtime/device_model/ADMStatus.h"

namespace commandfilter {

/// The service named "DMFDeviceStatus". Every message gives an object, nil when the device has no
/// such part or does not tell; states are words of the framework's vocabulary.
class COMMANDFILTER_EXPORT ADMDeviceStatus : public ADMStatus {
 public:
  static const Protocol kProtocol;
  /// The rows of the messages below.
  static const MethodGroup kMethods;

  /// What the device is doing, a word.
  virtual Value deviceState() { return {}; }
  /// How full the battery is, in percent.
  virtual Value batteryLevel() { return {}; }
  /// The battery's condition, a word.
  virtual Value batteryCondition() { return {}; }
  /// The level, in percent, at which the battery's state changes.
  virtual Value batteryLevelTrigger() { return {}; }
  /// The device's serial number, a text.
  virtual Value deviceSerialNumber() { return {}; }
  /// The version of the device's firmware, a text.
  virtual Value firmwareVersion() { return {}; }
  /// Why the device is in its state: words, the most serious first.
  virtual Value deviceSubstate() { return {}; }
  /// Whether a duplexer is installed, a boolean number.
  virtual Value isDuplexerInstalled() { return {}; }
  /// The resolutions that the device prints with, an array.
  virtual Value supportedResolutions() { return {}; }
  /// Whether somebody has reserved the device, a word.
  virtual Value reserveModeState() { return {}; }
  /// The model's name as people say it, a text.
  virtual Value humanReadableModelName() { return {}; }
  /// The maker's product number, a text.
  virtual Value productNumber() { return {}; }
  /// The region that the device was made for.
  virtual Value regionCode() { return {}; }
  /// The state of the print heads' alignment, a word.
  virtual Value printheadAlignmentState() { return {}; }
  /// The state of the medium in the built-in calibrator.
  virtual Value bbcMediaState() { return {}; }
  /// The state of the photo tray, a word.
  virtual Value photoTrayState() { return {}; }
  /// The state of the pad that takes up waste ink, a word.
  virtual Value diaperState() { return {}; }
  /// The state of the sensor for lines on the paper, a word.
  virtual Value loidSensorState() { return {}; }
  /// The state of a connected camera, a word.
  virtual Value cameraState() { return {}; }
  /// The state of the memory card, a word.
  virtual Value photoCardState() { return {}; }
  /// The state of the sheet of photo proofs, a word.
  virtual Value photoProofSheetState() { return {}; }
  /// The state of the scanner, a word.
  virtual Value scannerState() { return {}; }
  /// The state of the fax, a word.
  virtual Value faxState() { return {}; }
  /// What the device's display shows.
  virtual Value deviceUIState() { return {}; }

 protected:
  ~ADMDeviceStatus() = default;
};

}  // namespace commandfilter
