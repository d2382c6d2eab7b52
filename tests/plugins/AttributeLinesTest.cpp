#include "AttributeLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "SchedulerLines.h"

namespace commandfilter::standard {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

std::vector<std::string> repeated(const std::string& value, std::size_t count) {
  return std::vector<std::string>(count, value);
}

std::size_t countIn(const std::string& line) {
  return static_cast<std::size_t>(std::ranges::count(line, ',')) + 1;
}

TEST(AttributeLine, HoldsAllAttributes) {
  const AttributeLines result =
      attributeLines({{"marker-names", {"Black", "Deep Cyan"}}, {"marker-levels", {"1", "-3"}}});
  EXPECT_THAT(result.lines, ElementsAre("ATTR: marker-names='Black,Deep Cyan' marker-levels=1,-3"));
  EXPECT_EQ(result.leftOut, 0U);
}

TEST(AttributeLine, LeavesOutAttributesWithoutValues) {
  EXPECT_THAT(attributeLines({{"a", {}}, {"b", {"1"}}}).lines, ElementsAre("ATTR: b=1"));
  EXPECT_TRUE(attributeLines({{"a", {}}}).lines.empty());
  EXPECT_TRUE(attributeLines({}).lines.empty());
}

TEST(AttributeLine, HasAsManyValuesForEachAttribute) {
  const AttributeLines result = attributeLines({{"a", {"1", "2", "3"}}, {"b", {"1", "2"}}});
  EXPECT_THAT(result.lines, ElementsAre("ATTR: a=1,2 b=1,2"));
  EXPECT_EQ(result.leftOut, 1U);
}

TEST(AttributeLine, HasNoEmptyValue) {
  EXPECT_THAT(attributeLines({{"marker-names", {"\n", "b"}}}).lines,
              ElementsAre("ATTR: marker-names='?,b'"));
}

TEST(AttributeLine, HasNamesThatIPPCanHold) {
  const AttributeLines result = attributeLines({{"marker-names", {std::string(300, 'x')}}});
  EXPECT_THAT(result.lines, ElementsAre("ATTR: marker-names=" + std::string(255, 'x')));
}

TEST(AttributeLine, LeavesOutNamesThatAreKnown) {
  const std::vector<SupplyAttribute> attributes{{"marker-names", {"A", "B"}},
                                                {"marker-levels", {"1", "2"}}};
  EXPECT_THAT(attributeLines(attributes, {}, {"A", "B"}).lines,
              ElementsAre("ATTR: marker-levels=1,2"));
  EXPECT_THAT(attributeLines(attributes, {}, {"A"}).lines,
              ElementsAre("ATTR: marker-names=A,B marker-levels=1,2"));
  EXPECT_TRUE(attributeLines({{"marker-names", {"A"}}}, {}, {"A"}).lines.empty());
}

TEST(AttributeLine, BecomesOneForEachAttributeWhenItIsTooLong) {
  const AttributeLines result = attributeLines(
      {{"marker-names", repeated("Black Toner", 150)}, {"marker-levels", repeated("100", 150)}});
  ASSERT_THAT(result.lines, SizeIs(2));
  EXPECT_TRUE(result.lines[0].starts_with("ATTR: marker-names='Black Toner,"));
  EXPECT_EQ(countIn(result.lines[1]), 150U);
  EXPECT_EQ(result.leftOut, 0U);
}

TEST(AttributeLine, ShortensNamesBeforeItLeavesOutSupplies) {
  const AttributeLines result = attributeLines(
      {{"marker-names", repeated("B\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC lack", 200)},
       {"marker-levels", repeated("100", 200)}});
  ASSERT_THAT(result.lines, SizeIs(2));
  EXPECT_LE(result.lines[0].size(), kLongestLine);
  EXPECT_EQ(countIn(result.lines[0]), 200U);
  EXPECT_EQ(countIn(result.lines[1]), 200U);
  EXPECT_TRUE(
      result.lines[0].starts_with("ATTR: marker-names='B\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC,"));
}

TEST(AttributeLine, TakesShortFormsBeforeItLeavesOutSupplies) {
  const AttributeLines result =
      attributeLines({{"marker-types", repeated("toner-cartridge", 200)}},
                     {{"marker-types", {{"toner-cartridge", "toner"}, {"x", "y"}}}});
  ASSERT_THAT(result.lines, SizeIs(1));
  EXPECT_EQ(countIn(result.lines[0]), 200U);
  EXPECT_TRUE(result.lines[0].ends_with(",toner,toner"));
}

TEST(AttributeLine, LeavesOutTheSameSuppliesOfEachAttribute) {
  const AttributeLines result = attributeLines(
      {{"marker-names", repeated("Black Toner", 3000)}, {"marker-levels", repeated("100", 3000)}});
  ASSERT_THAT(result.lines, SizeIs(2));
  EXPECT_THAT(result.lines, Each(::testing::ResultOf([](const std::string& l) { return l.size(); },
                                                     ::testing::Le(kLongestLine))));
  EXPECT_EQ(countIn(result.lines[0]), countIn(result.lines[1]));
  EXPECT_EQ(countIn(result.lines[0]) + result.leftOut, 3000U);
  EXPECT_GT(countIn(result.lines[0]), 250U);
}

}  // namespace
}  // namespace commandfilter::standard
