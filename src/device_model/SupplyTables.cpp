// Supplies as the Printer MIB lists them.
#include <algorithm>
#include <array>
#include <map>

#include "device_model/ColorNames.h"
#include "device_model/Supply.h"

namespace commandfilter {

namespace {

// The columns of prtMarkerSuppliesTable and of prtMarkerColorantTable.
constexpr std::uint32_t kColorantIndex = 3;
constexpr std::uint32_t kClass = 4;
constexpr std::uint32_t kType = 5;
constexpr std::uint32_t kDescription = 6;
constexpr std::uint32_t kUnit = 7;
constexpr std::uint32_t kCapacity = 8;
constexpr std::uint32_t kLevel = 9;
constexpr std::uint32_t kColorantValue = 4;

constexpr std::array<std::string_view, 5> kClassWords{"", "other", "", "supplyThatIsConsumed",
                                                      "receptacleThatIsFilled"};
constexpr std::array<std::string_view, 35> kTypeWords{"",
                                                      "other",
                                                      "unknown",
                                                      "toner",
                                                      "wasteToner",
                                                      "ink",
                                                      "inkCartridge",
                                                      "inkRibbon",
                                                      "wasteInk",
                                                      "opc",
                                                      "developer",
                                                      "fuserOil",
                                                      "solidWax",
                                                      "ribbonWax",
                                                      "wasteWax",
                                                      "fuser",
                                                      "coronaWire",
                                                      "fuserOilWick",
                                                      "cleanerUnit",
                                                      "fuserCleaningPad",
                                                      "transferUnit",
                                                      "tonerCartridge",
                                                      "fuserOiler",
                                                      "water",
                                                      "wasteWater",
                                                      "glueWaterAdditive",
                                                      "wastePaper",
                                                      "bindingSupply",
                                                      "bandingSupply",
                                                      "stitchingWire",
                                                      "shrinkWrap",
                                                      "paperWrap",
                                                      "staples",
                                                      "inserts",
                                                      "covers"};
constexpr std::array<std::string_view, 20> kUnitWords{"",
                                                      "other",
                                                      "unknown",
                                                      "tenThousandthsOfInches",
                                                      "micrometers",
                                                      "",
                                                      "",
                                                      "impressions",
                                                      "sheets",
                                                      "",
                                                      "",
                                                      "hours",
                                                      "thousandthsOfOunces",
                                                      "tenthsOfGrams",
                                                      "hundrethsOfFluidOunces",
                                                      "tenthsOfMilliliters",
                                                      "feet",
                                                      "meters",
                                                      "items",
                                                      "percent"};

// Rows of one device by their index; a row is its columns' values.
using Row = std::map<std::uint32_t, std::string_view>;
using Rows = std::map<std::uint32_t, Row>;

// Below a table: 1 for its rows, the column, the device, the row.
struct Cell {
  std::uint32_t column;
  std::uint32_t device;
  std::uint32_t row;
};
std::optional<Cell> cellOf(const ObjectID& object, const ObjectID& table) {
  constexpr std::size_t kIndexes = 4;
  const std::size_t start = table.size();
  if (object.size() != start + kIndexes || !isBelow(object, table) || object[start] != 1) return {};
  return Cell{object[start + 1], object[start + 2], object[start + 3]};
}

// Those of the given device; without one, of the first, which becomes the given one.
Rows rowsOf(const std::vector<SNMPEntry>& entries, const ObjectID& table,
            std::optional<std::uint32_t>& device) {
  Rows rows;
  for (const SNMPEntry& entry : entries) {
    const std::optional<Cell> cell = cellOf(entry.identifier, table);
    if (!cell) continue;
    if (!device) device = cell->device;
    if (cell->device == *device) rows[cell->row][cell->column] = entry.value;
  }
  return rows;
}

std::string_view valueIn(const Row& row, std::uint32_t column) {
  const auto found = row.find(column);
  return found != row.end() ? found->second : std::string_view();
}

void setLevel(Supply& supply, std::int64_t level) {
  constexpr std::int64_t kSome = -3;
  constexpr std::int64_t kUnknown = -2;
  if (level < 0) {
    supply.levelInfo = level == kSome ? "some" : level == kUnknown ? "unknown" : "other";
    return;
  }
  supply.remaining = level;
  constexpr std::int64_t kWhole = 100;
  // A level above the capacity is a full supply: printers lie.
  if (supply.unit == "percent") {
    supply.percent = static_cast<int>(std::min(level, kWhole));
  } else if (supply.capacity) {
    const double share = static_cast<double>(level) / static_cast<double>(*supply.capacity);
    // Without std::lround: libm would be loaded for it.
    constexpr double kHalf = 0.5;
    supply.percent = static_cast<int>(std::min(share, 1.0) * static_cast<double>(kWhole) + kHalf);
    // A rest is not nothing.
    if (*supply.percent == 0 && level > 0) supply.percent = 1;
  } else {
    supply.levelInfo = "unknown";
  }
}

}  // namespace

const ObjectID& suppliesTable() {
  static const ObjectID table{1, 3, 6, 1, 2, 1, 43, 11, 1};
  return table;
}

const ObjectID& colorantTable() {
  static const ObjectID table{1, 3, 6, 1, 2, 1, 43, 12, 1};
  return table;
}

std::vector<Supply> suppliesOfTables(const std::vector<SNMPEntry>& supplies,
                                     const std::vector<SNMPEntry>& colorants) {
  std::optional<std::uint32_t> device;
  const Rows rows = rowsOf(supplies, suppliesTable(), device);
  const Rows colors = rowsOf(colorants, colorantTable(), device);
  std::vector<Supply> found;
  for (const auto& [index, row] : rows) {
    Supply supply;
    supply.identifier = std::to_string(index);
    supply.name = textOfSNMPValue(valueIn(row, kDescription));
    supply.type = wordOfSNMPValue(kTypeWords, valueIn(row, kType));
    supply.supplyClass = wordOfSNMPValue(kClassWords, valueIn(row, kClass));
    supply.unit = wordOfSNMPValue(kUnitWords, valueIn(row, kUnit));
    const std::optional<std::int64_t> capacity = integerOfSNMPValue(valueIn(row, kCapacity));
    if (capacity && *capacity > 0) supply.capacity = capacity;
    if (const auto level = integerOfSNMPValue(valueIn(row, kLevel))) setLevel(supply, *level);
    const std::optional<std::int64_t> color = integerOfSNMPValue(valueIn(row, kColorantIndex));
    if (color && *color > 0 && *color <= UINT32_MAX) {
      const auto colorant = colors.find(static_cast<std::uint32_t>(*color));
      if (colorant != colors.end()) {
        supply.colorName = textOfSNMPValue(valueIn(colorant->second, kColorantValue));
      }
    }
    supply.rgb = rgbOfColorName(supply.colorName);
    found.push_back(std::move(supply));
  }
  return found;
}

}  // namespace commandfilter
