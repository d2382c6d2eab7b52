// The status of the device's supplies.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"
#include "runtime/device_model/ADMStatus.h"

namespace commandfilter {

/// The service named "DMFSuppliesStatus". Every message gives an object; it is nil for an
/// identifier that is not among `suppliesIdentifiers`, and for what the device does not tell. The
/// protocol refines `ADMSuppliesManagement` too; a class that conforms derives from both
/// interfaces.
class COMMANDFILTER_EXPORT ADMSuppliesStatus : public ADMStatus {
 public:
  static const Protocol kProtocol;
  /// The rows of the messages below.
  static const MethodGroup kMethods;

  /// What the device says about the supplies' warranty.
  virtual Value warrantyValue() { return {}; }
  /// The identifiers of all supplies, an array of strings in the device's order.
  virtual Value suppliesIdentifiers() { return {}; }

  /// The supply's name as the device gives it, a text.
  virtual Value supplyNameForIdentifier(const Value& /*identifier*/) { return {}; }
  /// What the supply is, a text for people.
  virtual Value supplyDescriptionForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The maker's part number, a text.
  virtual Value supplyPartNumberForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The maker's selectability numbers.
  virtual Value supplySelectabilityForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The supply's state, a word.
  virtual Value supplyStateForIdentifier(const Value& /*identifier*/) { return {}; }
  /// Whether the supply is a genuine one, a word.
  virtual Value supplyAuthenticationForIdentifier(const Value& /*identifier*/) { return {}; }
  /// What is left, in percent; of a receptacle, the room that is left. nil when the device does not
  /// know.
  virtual Value supplyLevelForIdentifier(const Value& /*identifier*/) { return {}; }
  /// How much a full supply holds, in the supply's unit.
  virtual Value supplyCapacityForIdentifier(const Value& /*identifier*/) { return {}; }
  /// For how many pages the rest lasts, an integer.
  virtual Value supplyRemainingPagesForIdentifier(const Value& /*identifier*/) { return {}; }
  /// When the supply expires.
  virtual Value supplyExpirationDateForIdentifier(const Value& /*identifier*/) { return {}; }
  /// Whether the supply is used up or filled, a word.
  virtual Value supplyClassForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The unit of the capacity, a word.
  virtual Value supplyMeasurementUnitForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The kind of supply, a word.
  virtual Value supplyTypeForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The name of the supply's colour, a text.
  virtual Value supplyColorNameForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The supply's colour as `#RRGGBB`, several for a supply of several colours.
  virtual Value supplyRGBRepresentationForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The volume of a drop.
  virtual Value supplyDropVolumeForIdentifier(const Value& /*identifier*/) { return {}; }
  /// Why the supply is in its state.
  virtual Value supplySubstateForIdentifier(const Value& /*identifier*/) { return {}; }
  /// The name of the colour that belongs into the place where the supply is.
  virtual Value supplyExpectedColorNameForIdentifier(const Value& /*identifier*/) { return {}; }
  /// What the device says about the level besides the number.
  virtual Value supplyAdditionalInkLevelInfoForIdentifier(const Value& /*identifier*/) {
    return {};
  }
  /// Whether the supply came with the device, a boolean number.
  virtual Value isIntroSupplyForIdentifier(const Value& /*identifier*/) { return {}; }
  /// How messages about the level are to be put.
  virtual Value supplyLevelMessagingStyleForIdentifier(const Value& /*identifier*/) { return {}; }

 protected:
  ~ADMSuppliesStatus() = default;
};

}  // namespace commandfilter
