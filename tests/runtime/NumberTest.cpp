#include "runtime/Number.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

namespace commandfilter {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTwoTo53 = 9007199254740992.0;
constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;
constexpr std::int64_t kIntegerTwoTo53 = std::int64_t{1} << 53U;

std::string describedAs(const Number& number) {
  std::string text;
  number.appendDescription(text);
  return text;
}

TEST(Number, KnowsTheEncodingOfTheTypeThatItWasMadeFrom) {
  EXPECT_EQ(Number::boolean(true).encoding(), 'c');
  EXPECT_EQ(Number::integer(true).encoding(), 'c');
  EXPECT_EQ(Number::integer(std::int8_t{1}).encoding(), 'c');
  EXPECT_EQ(Number::integer(std::uint8_t{1}).encoding(), 'C');
  EXPECT_EQ(Number::integer(std::int16_t{1}).encoding(), 's');
  EXPECT_EQ(Number::integer(std::uint16_t{1}).encoding(), 'S');
  EXPECT_EQ(Number::integer(std::int32_t{1}).encoding(), 'i');
  EXPECT_EQ(Number::integer(std::uint32_t{1}).encoding(), 'I');
  EXPECT_EQ(Number::integer(std::int64_t{1}).encoding(), 'q');
  EXPECT_EQ(Number::integer(std::uint64_t{1}).encoding(), 'Q');
  EXPECT_EQ(Number::integer(1LL).encoding(), 'q');
  EXPECT_EQ(Number::integer(1ULL).encoding(), 'Q');
  EXPECT_EQ(Number::real(1.0F).encoding(), 'f');
  EXPECT_EQ(Number::real(1.0).encoding(), 'd');
}

TEST(Number, IsABooleanWithTheEncodingOfACharacter) {
  EXPECT_TRUE(Number::boolean(false).isBoolean());
  EXPECT_TRUE(Number::integer(std::int8_t{7}).isBoolean());
  EXPECT_FALSE(Number::integer(std::uint8_t{1}).isBoolean());
  EXPECT_FALSE(Number::integer(1).isBoolean());
}

TEST(Number, IsRealWithARealEncoding) {
  EXPECT_TRUE(Number::real(1.0).isReal());
  EXPECT_TRUE(Number::real(1.0F).isReal());
  EXPECT_FALSE(Number::integer(std::uint64_t{1}).isReal());
  EXPECT_FALSE(Number::boolean(true).isReal());
}

TEST(Number, CutsIntegersToTheWidthAskedFor) {
  const Number number = Number::integer(std::int64_t{0x123456789ABCDEF0});
  EXPECT_EQ(number.charValue(), std::int8_t{-16});
  EXPECT_EQ(number.shortValue(), static_cast<std::int16_t>(0xDEF0));
  EXPECT_EQ(number.intValue(), static_cast<std::int32_t>(0x9ABCDEF0));
  EXPECT_EQ(number.unsignedIntValue(), 0x9ABCDEF0U);
  EXPECT_EQ(number.longValue(), 0x123456789ABCDEF0);
  EXPECT_EQ(number.unsignedLongValue(), 0x123456789ABCDEF0U);
}

TEST(Number, TurnsLargeUnsignedIntegersIntoSignedOnesByTheirBits) {
  const Number number = Number::integer(std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(number.longValue(), -1);
  EXPECT_EQ(number.intValue(), -1);
  EXPECT_EQ(number.charValue(), -1);
  EXPECT_EQ(number.unsignedLongValue(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(number.doubleValue(), kTwoTo64);
}

TEST(Number, TurnsNegativeIntegersIntoUnsignedOnesByTheirBits) {
  EXPECT_EQ(Number::integer(-1).unsignedLongValue(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(Number::integer(-1).unsignedIntValue(), std::numeric_limits<std::uint32_t>::max());
}

TEST(Number, TruncatesReals) {
  EXPECT_EQ(Number::real(2.9).longValue(), 2);
  EXPECT_EQ(Number::real(-2.9).longValue(), -2);
  EXPECT_EQ(Number::real(-0.5).intValue(), 0);
  EXPECT_EQ(Number::real(2.9F).intValue(), 2);
  EXPECT_EQ(Number::real(3.7).unsignedLongValue(), 3U);
}

TEST(Number, CutsARealOnlyAfterLimitingItTo64Bits) {
  EXPECT_EQ(Number::real(300.7).charValue(), 44);
  EXPECT_EQ(Number::real(70000.0).shortValue(), 4464);
  EXPECT_EQ(Number::real(4294967301.0).intValue(), 5);
  EXPECT_EQ(Number::real(1e300).longValue(), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(Number::real(1e300).intValue(), -1);
  EXPECT_EQ(Number::real(-1e300).longValue(), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(Number::real(-1e300).intValue(), 0);
}

TEST(Number, LimitsRealsExactlyAtTheEdgesOf64Bits) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(Number::real(kTwoTo63).longValue(), kMost);
  EXPECT_EQ(Number::real(std::nextafter(kTwoTo63, 0)).longValue(), kMost - 1023);
  EXPECT_EQ(Number::real(-kTwoTo63).longValue(), kLeast);
  EXPECT_EQ(Number::real(std::nextafter(-kTwoTo63, 0)).longValue(), kLeast + 1024);
  EXPECT_EQ(Number::real(kTwoTo63).unsignedLongValue(), std::uint64_t{1} << 63U);
  EXPECT_EQ(Number::real(std::nextafter(kTwoTo64, 0)).unsignedLongValue(),
            std::numeric_limits<std::uint64_t>::max() - 2047);
  EXPECT_EQ(Number::real(kTwoTo64).unsignedLongValue(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(Number::real(-1.0).unsignedLongValue(), std::numeric_limits<std::uint64_t>::max());
}

TEST(Number, TurnsInfinitiesIntoTheLimitsAndNoNumberIntoZero) {
  EXPECT_EQ(Number::real(kInfinity).longValue(), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(Number::real(-kInfinity).longValue(), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(Number::real(kInfinity).unsignedLongValue(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(Number::real(kNaN).longValue(), 0);
  EXPECT_EQ(Number::real(kNaN).unsignedLongValue(), 0U);
  EXPECT_EQ(Number::real(kNaN).charValue(), 0);
}

TEST(Number, BecomesAReal) {
  EXPECT_EQ(Number::integer(-3).doubleValue(), -3.0);
  EXPECT_EQ(Number::integer(std::uint64_t{3}).doubleValue(), 3.0);
  EXPECT_EQ(Number::boolean(true).doubleValue(), 1.0);
  EXPECT_EQ(Number::real(0.1F).doubleValue(), static_cast<double>(0.1F));
  EXPECT_EQ(Number::real(0.1).floatValue(), 0.1F);
  EXPECT_EQ(Number::integer(7).floatValue(), 7.0F);
}

TEST(Number, IsFalseOnlyAsZero) {
  EXPECT_FALSE(Number::boolean(false).boolValue());
  EXPECT_FALSE(Number::integer(0).boolValue());
  EXPECT_FALSE(Number::integer(std::uint64_t{0}).boolValue());
  EXPECT_FALSE(Number::real(0.0).boolValue());
  EXPECT_FALSE(Number::real(-0.0).boolValue());
  EXPECT_TRUE(Number::real(0.25).boolValue());
  EXPECT_TRUE(Number::integer(-1).boolValue());
  EXPECT_TRUE(Number::integer(std::uint64_t{1} << 63U).boolValue());
  EXPECT_TRUE(Number::integer(256).boolValue());
}

TEST(Number, EqualsAcrossEncodings) {
  const std::array<Number, 11> twos{Number::integer(std::int8_t{2}),
                                    Number::integer(std::uint8_t{2}),
                                    Number::integer(std::int16_t{2}),
                                    Number::integer(std::uint16_t{2}),
                                    Number::integer(2),
                                    Number::integer(2U),
                                    Number::integer(std::int64_t{2}),
                                    Number::integer(std::uint64_t{2}),
                                    Number::real(2.0F),
                                    Number::real(2.0),
                                    Number::integer(std::size_t{1} + 1)};
  for (const Number& left : twos) {
    for (const Number& right : twos) {
      EXPECT_EQ(left, right) << left.encoding() << right.encoding();
      EXPECT_EQ(left.hash(), right.hash()) << left.encoding() << right.encoding();
    }
  }
  EXPECT_EQ(Number::boolean(true), Number::real(1.0));
  EXPECT_EQ(Number::boolean(true).hash(), Number::real(1.0).hash());
  EXPECT_EQ(Number::boolean(false), Number::integer(0));
}

TEST(Number, ComparesWithoutRoundingIntegersToReals) {
  const Number above = Number::integer(kIntegerTwoTo53 + 1);
  EXPECT_NE(above, Number::real(kTwoTo53));
  EXPECT_TRUE(above.compare(Number::real(kTwoTo53)) > 0);
  EXPECT_TRUE(Number::real(kTwoTo53).compare(above) < 0);
  EXPECT_EQ(Number::integer(kIntegerTwoTo53), Number::real(kTwoTo53));
  EXPECT_NE(Number::integer(std::uint64_t{1} + (std::uint64_t{1} << 53U)), Number::real(kTwoTo53));
}

TEST(Number, TellsTheLargestUnsignedFromMinusOne) {
  const Number largest = Number::integer(std::numeric_limits<std::uint64_t>::max());
  const Number minusOne = Number::integer(-1);
  EXPECT_NE(largest, minusOne);
  EXPECT_TRUE(largest.compare(minusOne) > 0);
  EXPECT_TRUE(minusOne.compare(largest) < 0);
  EXPECT_TRUE(largest.compare(Number::real(-1.0)) > 0);
  EXPECT_NE(largest, Number::real(kTwoTo64));
  EXPECT_TRUE(largest.compare(Number::real(kTwoTo64)) < 0);
  EXPECT_TRUE(Number::real(kTwoTo64).compare(largest) > 0);
}

TEST(Number, ComparesSignedWithUnsignedByValue) {
  EXPECT_EQ(Number::integer(5), Number::integer(std::uint64_t{5}));
  EXPECT_TRUE(Number::integer(4).compare(Number::integer(std::uint64_t{5})) < 0);
  EXPECT_TRUE(Number::integer(std::uint64_t{5}).compare(Number::integer(4)) > 0);
  EXPECT_TRUE(Number::integer(std::uint64_t{5}).compare(Number::integer(std::uint64_t{6})) < 0);
  EXPECT_TRUE(Number::integer(-6).compare(Number::integer(-5)) < 0);
}

TEST(Number, ComparesFractionsWithIntegers) {
  EXPECT_TRUE(Number::integer(0).compare(Number::real(0.5)) < 0);
  EXPECT_TRUE(Number::integer(0).compare(Number::real(-0.5)) > 0);
  EXPECT_TRUE(Number::integer(std::uint64_t{0}).compare(Number::real(-0.5)) > 0);
  EXPECT_TRUE(Number::integer(std::uint64_t{1}).compare(Number::real(1.5)) < 0);
  EXPECT_TRUE(Number::integer(-1).compare(Number::real(-1.5)) > 0);
  EXPECT_TRUE(Number::real(-1.5).compare(Number::integer(-1)) < 0);
  EXPECT_TRUE(Number::real(1.5).compare(Number::real(2.5)) < 0);
  EXPECT_TRUE(Number::real(2.5).compare(Number::real(1.5)) > 0);
}

TEST(Number, PutsIntegersBetweenTheInfinities) {
  for (const Number& number :
       {Number::integer(std::numeric_limits<std::int64_t>::max()),
        Number::integer(std::numeric_limits<std::int64_t>::min()),
        Number::integer(std::numeric_limits<std::uint64_t>::max()), Number::real(1e308)}) {
    EXPECT_TRUE(number.compare(Number::real(kInfinity)) < 0);
    EXPECT_TRUE(number.compare(Number::real(-kInfinity)) > 0);
    EXPECT_TRUE(Number::real(kInfinity).compare(number) > 0);
  }
  EXPECT_EQ(Number::real(kInfinity), Number::real(kInfinity));
  EXPECT_NE(Number::real(kInfinity), Number::real(-kInfinity));
}

TEST(Number, PutsNoNumberBeforeEveryOther) {
  const Number none = Number::real(kNaN);
  EXPECT_EQ(none, Number::real(kNaN));
  EXPECT_EQ(none.hash(), Number::real(-kNaN).hash());
  EXPECT_TRUE(none.compare(Number::real(-kInfinity)) < 0);
  EXPECT_TRUE(Number::real(-kInfinity).compare(none) > 0);
  EXPECT_TRUE(none.compare(Number::integer(-1)) < 0);
  EXPECT_TRUE(Number::integer(0).compare(none) > 0);
  EXPECT_TRUE(Number::integer(std::uint64_t{0}).compare(none) > 0);
}

TEST(Number, GivesEqualNumbersEqualHashes) {
  EXPECT_EQ(Number::real(0.0).hash(), Number::real(-0.0).hash());
  EXPECT_EQ(Number::real(0.0), Number::real(-0.0));
  EXPECT_EQ(Number::real(-5.0).hash(), Number::integer(-5).hash());
  EXPECT_EQ(Number::real(kTwoTo63).hash(), Number::integer(std::uint64_t{1} << 63U).hash());
  EXPECT_EQ(Number::real(-kTwoTo63).hash(),
            Number::integer(std::numeric_limits<std::int64_t>::min()).hash());
  EXPECT_EQ(Number::real(0.5F).hash(), Number::real(0.5).hash());
  EXPECT_NE(Number::real(0.5).hash(), Number::real(0.25).hash());
  EXPECT_NE(Number::integer(1).hash(), Number::integer(2).hash());
}

TEST(Number, DescribesIntegersInDecimal) {
  EXPECT_EQ(describedAs(Number::boolean(true)), "1");
  EXPECT_EQ(describedAs(Number::boolean(false)), "0");
  EXPECT_EQ(describedAs(Number::integer(std::int8_t{-128})), "-128");
  EXPECT_EQ(describedAs(Number::integer(std::uint8_t{200})), "200");
  EXPECT_EQ(describedAs(Number::integer(std::numeric_limits<std::int64_t>::min())),
            "-9223372036854775808");
  EXPECT_EQ(describedAs(Number::integer(std::numeric_limits<std::uint64_t>::max())),
            "18446744073709551615");
}

TEST(Number, DescribesRealsWithSixteenDigits) {
  EXPECT_EQ(describedAs(Number::real(0.1)), "0.1");
  EXPECT_EQ(describedAs(Number::real(2.0)), "2");
  EXPECT_EQ(describedAs(Number::real(-0.0)), "-0");
  EXPECT_EQ(describedAs(Number::real(1.0 / 3)), "0.3333333333333333");
  EXPECT_EQ(describedAs(Number::real(0.1F)), "0.1000000014901161");
  EXPECT_EQ(describedAs(Number::real(1e16)), "1e+16");
  EXPECT_EQ(describedAs(Number::real(1e15)), "1000000000000000");
  EXPECT_EQ(describedAs(Number::real(1e-5)), "1e-05");
  EXPECT_EQ(describedAs(Number::real(kInfinity)), "inf");
  EXPECT_EQ(describedAs(Number::real(-kInfinity)), "-inf");
  EXPECT_EQ(describedAs(Number::real(kNaN)), "nan");
}

TEST(Number, DescribesRealsAsCDoes) {
  double real = 5e-324;
  for (int i = 0; i < 2000; ++i) {
    std::array<char, 64> expected{};
    std::snprintf(expected.data(), expected.size(), "%0.16g", real);
    EXPECT_EQ(describedAs(Number::real(real)), expected.data());
    real *= -2.0371;
  }
}

TEST(Number, AppendsItsDescription) {
  std::string text = "x";
  Number::integer(5).appendDescription(text);
  EXPECT_EQ(text, "x5");
}

}  // namespace
}  // namespace commandfilter
