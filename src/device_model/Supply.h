// One supply of a printer, however it was learnt about.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "device_model/QueueFacts.h"
#include "device_model/SNMPAnswer.h"

namespace commandfilter {

/// What is known about a supply; texts are empty and numbers missing where the source is silent.
/// Words are those of the Printer MIB (RFC 3805), such as `tonerCartridge`, whatever the source.
struct Supply {
  /// Unique among the device's supplies.
  std::string identifier;
  std::string name;
  std::string type;
  /// `supplyThatIsConsumed`, `receptacleThatIsFilled` or `other`.
  std::string supplyClass;
  std::string unit;
  /// How much it holds when it is full, in its unit.
  std::optional<std::int64_t> capacity;
  /// What is left in its unit; of a receptacle, the room that is left.
  std::optional<std::int64_t> remaining;
  /// The same in percent.
  std::optional<int> percent;
  /// At and below this percentage the device warns; none when it does not say.
  std::optional<int> lowPercent;
  /// Why there is no level: `some` for "some is left", `unknown` or `other`; empty when there is
  /// one.
  std::string levelInfo;
  std::string colorName;
  /// `#RRGGBB`, one after the other for several colours.
  std::string rgb;

  [[nodiscard]] bool isReceptacle() const noexcept {
    return supplyClass == "receptacleThatIsFilled";
  }
  /// `ok`, `low` or `empty`; of a receptacle `ok`, `almostFull` or `full`; empty when the level is
  /// not known.
  [[nodiscard]] std::string_view state() const noexcept;
};

/// The supplies of the Printer MIB: the entries below prtMarkerSuppliesTable, and those below
/// prtMarkerColorantTable, which name the colours. Entries of other objects and values that make no
/// sense are left out. Only the first printer of the agent counts.
[[nodiscard]] std::vector<Supply> suppliesOfTables(const std::vector<SNMPEntry>& supplies,
                                                   const std::vector<SNMPEntry>& colorants);

/// The supplies of a queue's marker attributes.
[[nodiscard]] std::vector<Supply> suppliesOfAttributes(const QueueAttributes& attributes);

/// The object identifiers of the two tables.
[[nodiscard]] const ObjectID& suppliesTable();
[[nodiscard]] const ObjectID& colorantTable();

}  // namespace commandfilter
