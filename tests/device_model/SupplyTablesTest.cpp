#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "device_model/Supply.h"

namespace commandfilter {
namespace {

// A row of the supplies' table: the columns from the marker's index on.
class SupplyTables : public ::testing::Test {
 protected:
  void addRow(std::uint32_t index, const std::vector<std::string>& columns,
              std::uint32_t device = 1) {
    for (std::uint32_t i = 0; i < columns.size(); ++i) {
      ObjectID object = suppliesTable();
      object.insert(object.end(), {1, i + 2, device, index});
      supplies_.push_back({object, columns[i]});
    }
  }
  void addColorant(std::uint32_t index, const std::string& name, std::uint32_t device = 1) {
    ObjectID object = colorantTable();
    object.insert(object.end(), {1, 4, device, index});
    colorants_.push_back({object, name});
  }
  // The only supply, of this class, unit, capacity and level.
  Supply supply(const std::string& supplyClass, const std::string& unit,
                const std::string& capacity, const std::string& level) {
    supplies_.clear();
    addRow(1, {"1", "0", supplyClass, "3", "Toner", unit, capacity, level});
    return suppliesOfTables(supplies_, colorants_).at(0);
  }

  std::vector<SNMPEntry> supplies_;
  std::vector<SNMPEntry> colorants_;
};

TEST_F(SupplyTables, GiveEachRowItsColumns) {
  addRow(1, {"1", "2", "3", "21", "Black Toner", "7", "2000", "500"});
  addRow(7, {"1", "0", "4", "4", "Waste", "19", "100", "30"});
  addColorant(2, "black");
  const std::vector<Supply> supplies = suppliesOfTables(supplies_, colorants_);
  ASSERT_EQ(supplies.size(), 2U);
  const Supply& toner = supplies[0];
  EXPECT_EQ(toner.identifier, "1");
  EXPECT_EQ(toner.name, "Black Toner");
  EXPECT_EQ(toner.type, "tonerCartridge");
  EXPECT_EQ(toner.supplyClass, "supplyThatIsConsumed");
  EXPECT_EQ(toner.unit, "impressions");
  EXPECT_EQ(toner.capacity, 2000);
  EXPECT_EQ(toner.remaining, 500);
  EXPECT_EQ(toner.percent, 25);
  EXPECT_EQ(toner.colorName, "black");
  EXPECT_EQ(toner.rgb, "#000000");
  EXPECT_EQ(toner.state(), "ok");
  const Supply& waste = supplies[1];
  EXPECT_EQ(waste.identifier, "7");
  EXPECT_EQ(waste.type, "wasteToner");
  EXPECT_TRUE(waste.isReceptacle());
  EXPECT_EQ(waste.percent, 30) << "the table counts the room that is left";
  EXPECT_EQ(waste.colorName, "");
}

TEST_F(SupplyTables, CountInPercentOrAgainstTheCapacity) {
  EXPECT_EQ(supply("3", "19", "-2", "40").percent, 40);
  EXPECT_EQ(supply("3", "15", "80", "20").percent, 25);
  EXPECT_EQ(supply("3", "15", "3", "2").percent, 67);
  EXPECT_EQ(supply("3", "15", "100000", "1").percent, 1) << "a rest is not nothing";
  EXPECT_EQ(supply("3", "15", "80", "0").percent, 0);
}

TEST_F(SupplyTables, DoNotBelieveALevelAboveTheCapacity) {
  EXPECT_EQ(supply("3", "19", "100", "250").percent, 100);
  EXPECT_EQ(supply("3", "15", "80", "9223372036854775807").percent, 100);
}

TEST_F(SupplyTables, HaveWordsForLevelsThatAreNone) {
  for (const auto& [level, word] : std::vector<std::pair<std::string, std::string>>{
           {"-1", "other"}, {"-2", "unknown"}, {"-3", "some"}, {"-4", "other"}}) {
    const Supply found = supply("3", "19", "100", level);
    EXPECT_EQ(found.percent, std::nullopt);
    EXPECT_EQ(found.remaining, std::nullopt);
    EXPECT_EQ(found.levelInfo, word);
  }
  EXPECT_EQ(supply("3", "15", "-2", "20").levelInfo, "unknown") << "a share of what?";
  EXPECT_EQ(supply("3", "15", "0", "20").percent, std::nullopt);
  EXPECT_EQ(supply("3", "19", "100", "").percent, std::nullopt);
}

TEST_F(SupplyTables, HaveStates) {
  EXPECT_EQ(supply("3", "19", "100", "0").state(), "empty");
  EXPECT_EQ(supply("3", "19", "100", "10").state(), "low");
  EXPECT_EQ(supply("3", "19", "100", "11").state(), "ok");
  EXPECT_EQ(supply("3", "19", "100", "-3").state(), "ok");
  EXPECT_EQ(supply("3", "19", "100", "-2").state(), "");
  EXPECT_EQ(supply("4", "19", "100", "0").state(), "full");
  EXPECT_EQ(supply("4", "19", "100", "5").state(), "almostFull");
  EXPECT_EQ(supply("4", "19", "100", "60").state(), "ok");
}

TEST_F(SupplyTables, LeaveOutWhatMakesNoSense) {
  addRow(1, {"x", "99", "77", "1000", "\xFF", "-5", "many", "half"});
  supplies_.push_back({suppliesTable(), "1"});
  supplies_.push_back({{1, 3, 6}, "1"});
  ObjectID deep = suppliesTable();
  deep.insert(deep.end(), {1, 9, 1, 1, 1});
  supplies_.push_back({deep, "50"});
  // Of an object beside the table's rows.
  ObjectID other = suppliesTable();
  other.insert(other.end(), {2, 6, 1, 2});
  supplies_.push_back({other, "Other"});
  ObjectID elsewhere = colorantTable();
  elsewhere.insert(elsewhere.end(), {1, 6, 1, 3});
  supplies_.push_back({elsewhere, "Elsewhere"});
  const std::vector<Supply> supplies = suppliesOfTables(supplies_, colorants_);
  ASSERT_EQ(supplies.size(), 1U);
  EXPECT_EQ(supplies[0].type, "");
  EXPECT_EQ(supplies[0].supplyClass, "");
  EXPECT_EQ(supplies[0].unit, "");
  EXPECT_EQ(supplies[0].capacity, std::nullopt);
  EXPECT_EQ(supplies[0].percent, std::nullopt);
  EXPECT_EQ(supplies[0].name, "\xC3\xBF");
}

TEST_F(SupplyTables, AreThoseOfTheFirstDevice) {
  addRow(1, {"1", "0", "3", "3", "A", "19", "100", "1"}, 5);
  addRow(2, {"1", "0", "3", "3", "B", "19", "100", "1"}, 6);
  const std::vector<Supply> supplies = suppliesOfTables(supplies_, colorants_);
  ASSERT_EQ(supplies.size(), 1U);
  EXPECT_EQ(supplies[0].name, "A");
}

TEST_F(SupplyTables, HaveNoColourOfAnIndexThatIsNone) {
  addColorant(1, "cyan");
  for (const char* index : {"0", "-1", "2", "4294967297", "x", ""}) {
    supplies_.clear();
    addRow(1, {"1", index, "3"});
    EXPECT_EQ(suppliesOfTables(supplies_, colorants_).at(0).colorName, "") << index;
  }
}

TEST_F(SupplyTables, TakeTheirColoursFromTheSameDevice) {
  addRow(1, {"1", "1", "3", "3", "A", "19", "100", "1"}, 5);
  addColorant(1, "cyan", 4);
  EXPECT_EQ(suppliesOfTables(supplies_, colorants_).at(0).colorName, "");
  addColorant(1, "magenta", 5);
  EXPECT_EQ(suppliesOfTables(supplies_, colorants_).at(0).colorName, "magenta");
}

// RFC 3805, each word at the place of its number.
TEST_F(SupplyTables, HaveTheWordsOfTheStandard) {
  const std::vector<std::string> classes{
      "", "other", "", "supplyThatIsConsumed", "receptacleThatIsFilled", ""};
  for (std::size_t i = 0; i < classes.size(); ++i) {
    EXPECT_EQ(supply(std::to_string(i), "19", "100", "1").supplyClass, classes[i]) << i;
  }
  const std::vector<std::string> units{"",
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
                                       "percent",
                                       ""};
  for (std::size_t i = 0; i < units.size(); ++i) {
    EXPECT_EQ(supply("3", std::to_string(i), "100", "1").unit, units[i]) << i;
  }
  const std::vector<std::string> types{"",
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
                                       "covers",
                                       ""};
  for (std::size_t i = 0; i < types.size(); ++i) {
    supplies_.clear();
    addRow(1, {"1", "0", "3", std::to_string(i)});
    EXPECT_EQ(suppliesOfTables(supplies_, colorants_).at(0).type, types[i]) << i;
  }
}

TEST_F(SupplyTables, MayBeEmpty) { EXPECT_TRUE(suppliesOfTables({}, {}).empty()); }

}  // namespace
}  // namespace commandfilter
