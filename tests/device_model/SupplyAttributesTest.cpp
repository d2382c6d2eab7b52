#include <gtest/gtest.h>

#include <vector>

#include "device_model/Supply.h"

namespace commandfilter {
namespace {

TEST(SupplyAttributes, GiveEachMarkerItsValues) {
  const std::vector<Supply> supplies = suppliesOfAttributes({
      {"marker-names", {"Black", "Waste"}},
      {"marker-types", {"toner-cartridge", "waste-toner"}},
      {"marker-colors", {"#00ffff", "none"}},
      {"marker-levels", {"42", "70"}},
      {"marker-low-levels", {"50", "-1"}},
      {"marker-high-levels", {"100", "65"}},
  });
  ASSERT_EQ(supplies.size(), 2U);
  EXPECT_EQ(supplies[0].identifier, "1");
  EXPECT_EQ(supplies[0].name, "Black");
  EXPECT_EQ(supplies[0].type, "tonerCartridge");
  EXPECT_EQ(supplies[0].supplyClass, "supplyThatIsConsumed");
  EXPECT_EQ(supplies[0].unit, "percent");
  EXPECT_EQ(supplies[0].percent, 42);
  EXPECT_EQ(supplies[0].rgb, "#00ffff");
  EXPECT_EQ(supplies[0].colorName, "cyan");
  EXPECT_EQ(supplies[0].state(), "low") << "its own threshold";
  EXPECT_EQ(supplies[1].identifier, "2");
  EXPECT_TRUE(supplies[1].isReceptacle());
  EXPECT_EQ(supplies[1].percent, 30) << "the scheduler counts what is full";
  EXPECT_EQ(supplies[1].rgb, "");
  EXPECT_EQ(supplies[1].state(), "almostFull");
}

TEST(SupplyAttributes, HaveWordsForLevelsThatAreNone) {
  const std::vector<Supply> supplies =
      suppliesOfAttributes({{"marker-levels", {"-1", "-2", "-3", "x", "250"}}});
  ASSERT_EQ(supplies.size(), 5U);
  EXPECT_EQ(supplies[0].levelInfo, "other");
  EXPECT_EQ(supplies[1].levelInfo, "unknown");
  EXPECT_EQ(supplies[2].levelInfo, "some");
  EXPECT_EQ(supplies[3].percent, std::nullopt);
  EXPECT_EQ(supplies[4].percent, 100);
}

TEST(SupplyAttributes, WarnAtTenPercentWithoutALimitThatMakesSense) {
  for (const char* limit : {"-1", "0", "100", "101", "x"}) {
    const std::vector<Supply> supplies = suppliesOfAttributes({
        {"marker-types", {"toner", "waste-toner"}},
        {"marker-levels", {"11", "89"}},
        {"marker-low-levels", {limit, limit}},
        {"marker-high-levels", {limit, limit}},
    });
    EXPECT_EQ(supplies[0].state(), "ok") << limit;
    EXPECT_EQ(supplies[0].lowPercent, std::nullopt) << limit;
    EXPECT_EQ(supplies[1].lowPercent, std::nullopt) << limit;
  }
}

TEST(SupplyAttributes, CountTheRoomOfAReceptacleThatWarnsAtNoLevel) {
  const std::vector<Supply> supplies = suppliesOfAttributes({
      {"marker-types", {"waste-toner", "waste-toner", "waste-toner"}},
      {"marker-levels", {"5", "5", "5"}},
      {"marker-low-levels", {"0", "10", "0"}},
      {"marker-high-levels", {"100", "100", "90"}},
  });
  EXPECT_EQ(supplies[0].percent, 5);
  EXPECT_EQ(supplies[0].state(), "almostFull");
  EXPECT_EQ(supplies[1].percent, 95);
  EXPECT_EQ(supplies[2].percent, 95);
}

TEST(SupplyAttributes, MayBeOfDifferentLengths) {
  const std::vector<Supply> supplies = suppliesOfAttributes(
      {{"marker-names", {"A", "B"}}, {"marker-levels", {"1"}}, {"marker-types", {}}});
  ASSERT_EQ(supplies.size(), 2U);
  EXPECT_EQ(supplies[1].percent, std::nullopt);
  EXPECT_EQ(supplies[1].type, "");
  EXPECT_EQ(supplies[1].supplyClass, "");
}

TEST(SupplyAttributes, MayBeMissing) { EXPECT_TRUE(suppliesOfAttributes({}).empty()); }

}  // namespace
}  // namespace commandfilter
