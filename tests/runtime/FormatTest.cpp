#include "runtime/Format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "TestObjects.h"
#include "TestValues.h"

namespace commandfilter {
namespace {

using namespace std::string_view_literals;
using testing::arrayOf;
using testing::stringOf;

// The formatted text; "nil" in angle brackets when there is none.
template <typename... Arguments>
std::string formatted(std::string_view text, const Arguments&... arguments) {
  const RefPtr<String> string = format(text, arguments...);
  return string ? string->text() : "<nil>";
}

TEST(Format, CopiesWhatIsNoConversion) {
  EXPECT_EQ(formatted(""), "");
  EXPECT_EQ(formatted("plain text"), "plain text");
  EXPECT_EQ(formatted("100%% sure"), "100% sure");
  EXPECT_EQ(formatted("a\0b %d"sv, 1), "a\0b 1"sv);
  EXPECT_EQ(formatted("\u00E4%d\u20AC", 1), "\u00E41\u20AC");
}

TEST(Format, LeavesConversionsWithoutArgumentsAsTheyAreWritten) {
  EXPECT_EQ(formatted("%d %@ %s %5.2f"), "%d %@ %s %5.2f");
  EXPECT_EQ(formatted("%d and %d", 1), "1 and %d");
  EXPECT_EQ(formatted("%"), "%");
  EXPECT_EQ(formatted("50% off"), "50% off");
  EXPECT_EQ(formatted("%99999d"), "%99999d");
}

TEST(Format, LeavesWhatIsNoConversionAsItIsWritten) {
  EXPECT_EQ(formatted("%", 1), "%");
  EXPECT_EQ(formatted("%d%", 1), "1%");
  EXPECT_EQ(formatted("%y %d", 1), "%y 1");
  EXPECT_EQ(formatted("%*d", 1), "%*d");
  EXPECT_EQ(formatted("%n", 1), "%n");
  EXPECT_EQ(formatted("%p", 1), "%p");
  EXPECT_EQ(formatted("%1$d", 1), "%1$d");
  EXPECT_EQ(formatted("%5", 1), "%5");
  EXPECT_EQ(formatted("%-+ #0", 1), "%-+ #0");
  EXPECT_EQ(formatted("%.", 1), "%.");
  EXPECT_EQ(formatted("%lll", 1), "%lll");
  EXPECT_EQ(formatted("%5%%d", 1), "%5%d");
}

TEST(Format, IgnoresArgumentsThatAreLeftOver) { EXPECT_EQ(formatted("%d", 1, 2, "x"), "1"); }

TEST(Format, DescribesObjects) {
  EXPECT_EQ(formatted("%@", stringOf("a \"b\"")), "a \"b\"");
  EXPECT_EQ(formatted("%@", String::create("x")), "x");
  EXPECT_EQ(formatted("%@", RefPtr<String>()), "(null)");
  EXPECT_EQ(formatted("%@", *String::create("x")), "x");
  EXPECT_EQ(formatted("%@", static_cast<const String*>(nullptr)), "(null)");
  EXPECT_EQ(formatted("%@", nullptr), "(null)");
  EXPECT_EQ(formatted("%@", Value()), "(null)");
  EXPECT_EQ(formatted("%@", Value::null()), "<null>");
  EXPECT_EQ(formatted("%@", arrayOf({stringOf("a b")})), "(\n    \"a b\"\n)");
  const Ref<testing::Greeter> greeter = make<testing::Greeter>("Anna");
  EXPECT_TRUE(formatted("%@", greeter).starts_with("<Greeter: 0x"));
}

TEST(Format, DescribesEverythingElseToo) {
  EXPECT_EQ(formatted("%@ %@ %@", 1, -1L, 2.5), "1 -1 2.5");
  EXPECT_EQ(formatted("%@", true), "1");
  EXPECT_EQ(formatted("%@", std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
  EXPECT_EQ(formatted("%@ %@ %@", "text", "view"sv, std::string("string")), "text view string");
  EXPECT_EQ(formatted("%@", static_cast<const char*>(nullptr)), "(null)");
  EXPECT_EQ(formatted("%5@", 1), "1");
}

TEST(Format, WritesSignedIntegers) {
  EXPECT_EQ(formatted("%d %i", 5, -5), "5 -5");
  EXPECT_EQ(formatted("%5d|%-5d|%05d|%+d|% d|%.3d", 7, 7, 7, 7, 7, 7),
            "    7|7    |00007|+7| 7|007");
  EXPECT_EQ(formatted("%ld %lld %hd %hhd %zd %qd %jd %td", 1, 2, 3, 4, 5, 6, 7, 8),
            "1 2 3 4 5 6 7 8");
  EXPECT_EQ(formatted("%d", std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(formatted("%d", std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
  EXPECT_EQ(formatted("%d %d", true, Number::integer(std::int8_t{-3})), "1 -3");
  EXPECT_EQ(formatted("%d", Value(Number::integer(12))), "12");
}

TEST(Format, TruncatesRealsForIntegers) {
  EXPECT_EQ(formatted("%d %i %u %x", 2.9, -2.9, 2.9, 255.5), "2 -2 2 ff");
  EXPECT_EQ(formatted("%d", 1e300), "9223372036854775807");
  EXPECT_EQ(formatted("%d", std::nan("")), "0");
}

TEST(Format, WritesUnsignedIntegers) {
  EXPECT_EQ(formatted("%u %x %X %o", 255U, 255U, 255U, 8U), "255 ff FF 10");
  EXPECT_EQ(formatted("%#x|%08x|%-6x|%#o", 255, 255, 255, 8), "0xff|000000ff|ff    |010");
  EXPECT_EQ(formatted("%lx", std::numeric_limits<std::uint64_t>::max()), "ffffffffffffffff");
}

TEST(Format, WritesTheBitsOfNegativeNumbersInTheWidthThatTheyHaveInC) {
  EXPECT_EQ(formatted("%x %u", -1, -1), "ffffffff 4294967295");
  EXPECT_EQ(formatted("%x", std::int16_t{-1}), "ffffffff");
  EXPECT_EQ(formatted("%x", std::int8_t{-2}), "fffffffe");
  EXPECT_EQ(formatted("%x", std::int64_t{-1}), "ffffffffffffffff");
  EXPECT_EQ(formatted("%x %x", Number::integer(-1), Number::integer(std::int64_t{-1})),
            "ffffffff ffffffffffffffff");
  EXPECT_EQ(formatted("%x", std::uint8_t{255}), "ff");
}

TEST(Format, WritesCharacters) {
  EXPECT_EQ(formatted("%c%c", 'a', 66), "aB");
  EXPECT_EQ(formatted("%c", 0xE4), "\u00E4");
  EXPECT_EQ(formatted("%c", 0x1FF), "\u00FF");
  EXPECT_EQ(formatted("%c", -1), "\u00FF");
  EXPECT_EQ(formatted("a%cb", 0), "a\0b"sv);
  EXPECT_EQ(formatted("%c", 256), "\0"sv);
  EXPECT_EQ(formatted("%c", 65.9), "A");
  for (int c = 0; c < 256; ++c) {
    const RefPtr<String> string = format("%c", c);
    EXPECT_EQ(string->length(), 1U) << c;
  }
}

TEST(Format, WritesReals) {
  EXPECT_EQ(formatted("%f %e %g %G", 1.5, 1.5, 1.5, 1e-10), "1.500000 1.500000e+00 1.5 1E-10");
  EXPECT_EQ(
      formatted("%.2f|%8.3f|%-8.1f|%+.0f|%08.2f", 3.14159, 3.14159, 3.14159, 3.14159, -3.14159),
      "3.14|   3.142|3.1     |+3|-0003.14");
  EXPECT_EQ(formatted("%.1E %F", 12345.0, 0.5), "1.2E+04 0.500000");
  EXPECT_EQ(formatted("%f %g", 2, Number::integer(3)), "2.000000 3");
  EXPECT_EQ(formatted("%f %f", std::numeric_limits<double>::infinity(), 0.5F), "inf 0.500000");
  EXPECT_EQ(formatted("%.0f", 1e300).size(), 301U);
}

TEST(Format, WritesText) {
  EXPECT_EQ(formatted("%s|%s|%s", "a", "b"sv, std::string("c")), "a|b|c");
  EXPECT_EQ(formatted("%s", stringOf("text")), "text");
  EXPECT_EQ(formatted("%s", Value()), "(null)");
  EXPECT_EQ(formatted("%s", static_cast<const char*>(nullptr)), "(null)");
  EXPECT_EQ(formatted("%5s|%-5s|%.2s", "abc", "abc", "abc"), "  abc|abc  |ab");
  EXPECT_EQ(formatted("%.0s", "abc"), "");
  EXPECT_EQ(formatted("%s", "\u00E4"), "\u00E4");
}

TEST(Format, ReplacesACharacterThatAPrecisionCuts) {
  EXPECT_EQ(formatted("%.1s", "\u00E4"), "\uFFFD");
  EXPECT_EQ(formatted("%.3s", "a\u20AC"), "a\uFFFD");
}

TEST(Format, IsNilForArgumentsOfAnotherKind) {
  for (const Value& wrong : {Value(), Value::null(), stringOf("7"), arrayOf({})}) {
    for (const char* text : {"%d", "%i", "%u", "%x", "%X", "%o", "%c", "%f", "%e", "%g"}) {
      EXPECT_EQ(formatted(text, wrong), "<nil>") << text;
    }
  }
  EXPECT_EQ(formatted("%d", "7"), "<nil>");
  EXPECT_EQ(formatted("%s", 7), "<nil>");
  EXPECT_EQ(formatted("%s", Value::null()), "<nil>");
  EXPECT_EQ(formatted("%s", arrayOf({})), "<nil>");
  EXPECT_EQ(formatted("%s", Number::integer(7)), "<nil>");
  EXPECT_EQ(formatted("good %d, bad %d", 1, "x"), "<nil>");
}

TEST(Format, IsNilForTextThatIsNotUTF8) {
  EXPECT_EQ(formatted("%s", "\xFF"), "<nil>");
  EXPECT_EQ(formatted("%@", "a\xC3"), "<nil>");
  EXPECT_EQ(formatted("%5s", "\xE4"sv), "<nil>");
}

TEST(Format, ReplacesIllFormedPartsOfTheFormatItself) {
  EXPECT_EQ(formatted("a\xFF%d", 1), "a\uFFFD1");
}

TEST(Format, LimitsWidthAndPrecision) {
  EXPECT_EQ(formatted("%4096d", 1).size(), 4096U);
  EXPECT_EQ(formatted("%.4096d", 1).size(), 4096U);
  EXPECT_EQ(formatted("%4096s", "x").size(), 4096U);
  EXPECT_EQ(formatted("%4096.4096f", 1e308).size(), 309U + 1 + 4096);
  for (const char* text : {"%4097d", "%.4097d", "%4097s", "%.4097f", "%99999999999999999999d",
                           "%.99999999999999999999f", "%5.4097@"}) {
    EXPECT_EQ(formatted(text, 1), "<nil>") << text;
  }
  EXPECT_EQ(formatted("%00000000000000000000005d", 1), "00001");
}

TEST(Format, TakesAListOfArguments) {
  const std::vector<FormatArgument> arguments{1, "two", 3.5, stringOf("four")};
  const RefPtr<String> string = formatWithArguments("%d %s %g %@", arguments);
  ASSERT_TRUE(string);
  EXPECT_EQ(string->view(), "1 two 3.5 four");
}

TEST(Format, ReleasesItsArguments) {
  const Ref<String> string = String::create("x");
  EXPECT_EQ(formatted("%@%@%d", string, string, "wrong"), "<nil>");
  EXPECT_EQ(string->referenceCount(), 1U);
}

TEST(Format, RaisesForWhatCannotBeDescribed) {
  const Value deep = testing::nestedArrays(5000, Value::null());
  EXPECT_EQ(testing::reasonOf([&] { static_cast<void>(format("%@", deep)); }), "nested too deeply");
}

}  // namespace
}  // namespace commandfilter
