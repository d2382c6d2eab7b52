#include "runtime/Date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "TestValues.h"
#include "runtime/Comparison.h"

namespace commandfilter {
namespace {

constexpr double kNoon = 1580472000;

TEST(Date, KeepsItsTime) {
  EXPECT_EQ(Date::create(kNoon + 0.25)->secondsSince1970(), kNoon + 0.25);
}

TEST(Date, EqualsTheSameTime) {
  EXPECT_TRUE(equal(Date::create(kNoon), Date::create(kNoon)));
  EXPECT_FALSE(equal(Date::create(kNoon), Date::create(kNoon + 0.25)));
  EXPECT_FALSE(equal(Date::create(kNoon), Number::real(kNoon)));
  EXPECT_FALSE(equal(Date::create(kNoon), Value()));
  EXPECT_EQ(hashOf(Date::create(0.0)), hashOf(Date::create(-0.0)));
  EXPECT_NE(hashOf(Date::create(kNoon)), hashOf(Date::create(kNoon + 1)));
}

TEST(Date, DescribesItselfInUniversalTime) {
  EXPECT_EQ(descriptionOf(Date::create(kNoon)), "2020-01-31 12:00:00 +0000");
  EXPECT_EQ(descriptionOf(Date::create(0)), "1970-01-01 00:00:00 +0000");
  EXPECT_EQ(descriptionOf(Date::create(951827696)), "2000-02-29 12:34:56 +0000");
  EXPECT_EQ(descriptionOf(Date::create(253402300799)), "9999-12-31 23:59:59 +0000");
}

TEST(Date, DescribesTheSecondThatHasBegun) {
  EXPECT_EQ(descriptionOf(Date::create(kNoon + 0.999)), "2020-01-31 12:00:00 +0000");
  EXPECT_EQ(descriptionOf(Date::create(-0.5)), "1969-12-31 23:59:59 +0000");
}

TEST(Date, DescribesYearsOfAnyLength) {
  EXPECT_EQ(descriptionOf(Date::create(-62135596800)), "0001-01-01 00:00:00 +0000");
  EXPECT_EQ(descriptionOf(Date::create(253402300800)), "10000-01-01 00:00:00 +0000");
  EXPECT_EQ(descriptionOf(Date::create(-62198755200)), "-001-01-01 00:00:00 +0000");
}

TEST(Date, SurvivesTimesThatNoCalendarHolds) {
  EXPECT_EQ(descriptionOf(Date::create(1e300)), "<date>");
  EXPECT_EQ(descriptionOf(Date::create(-1e300)), "<date>");
  EXPECT_EQ(descriptionOf(Date::create(std::numeric_limits<double>::infinity())), "<date>");
  EXPECT_FALSE(descriptionOf(Date::create(std::nan(""))).empty());
}

}  // namespace
}  // namespace commandfilter
