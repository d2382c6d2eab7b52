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
  virtual Value deviceState();
  /// How full the battery is, in percent.
  virtual Value batteryLevel();
  /// The battery's condition, a word.
  virtual Value batteryCondition();
  /// The level, in percent, at which the battery's state changes.
  virtual Value batteryLevelTrigger();
  /// The device's serial number, a text.
  virtual Value deviceSerialNumber();
  /// The version of the device's firmware, a text.
  virtual Value firmwareVersion();
  /// Why the device is in its state: words, the most serious first.
  virtual Value deviceSubstate();
  /// Whether a duplexer is installed, a boolean number.
  virtual Value isDuplexerInstalled();
  /// The resolutions that the device prints with, an array.
  virtual Value supportedResolutions();
  /// Whether somebody has reserved the device, a word.
  virtual Value reserveModeState();
  /// The model's name as people say it, a text.
  virtual Value humanReadableModelName();
  /// The maker's product number, a text.
  virtual Value productNumber();
  /// The region that the device was made for.
  virtual Value regionCode();
  /// The state of the print heads' alignment, a word.
  virtual Value printheadAlignmentState();
  /// The state of the medium in the built-in calibrator.
  virtual Value bbcMediaState();
  /// The state of the photo tray, a word.
  virtual Value photoTrayState();
  /// The state of the pad that takes up waste ink, a word.
  virtual Value diaperState();
  /// The state of the sensor for lines on the paper, a word.
  virtual Value loidSensorState();
  /// The state of a connected camera, a word.
  virtual Value cameraState();
  /// The state of the memory card, a word.
  virtual Value photoCardState();
  /// The state of the sheet of photo proofs, a word.
  virtual Value photoProofSheetState();
  /// The state of the scanner, a word.
  virtual Value scannerState();
  /// The state of the fax, a word.
  virtual Value faxState();
  /// What the device's display shows.
  virtual Value deviceUIState();

 protected:
  ~ADMDeviceStatus() = default;
};

}  // namespace commandfilter
