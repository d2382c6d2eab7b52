#include "runtime/Description.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "Counts.h"
#include "TestValues.h"
#include "runtime/Data.h"
#include "runtime/Date.h"

namespace commandfilter {
namespace {

using namespace std::string_view_literals;
using testing::arrayOf;
using testing::dictionaryOf;
using testing::kHundredThousand;
using testing::kMillion;
using testing::nestedArrays;
using testing::nestedDictionaries;
using testing::reasonOf;
using testing::runOnStackOf;
using testing::stringOf;

std::string quotedFormOf(std::string_view string) {
  std::string text;
  appendQuoted(text, string);
  return text;
}

TEST(Description, WritesSingleValuesPlainly) {
  EXPECT_EQ(descriptionOf(Value()), "(null)");
  EXPECT_EQ(descriptionOf(Value::null()), "<null>");
  EXPECT_EQ(descriptionOf(Value::boolean(true)), "1");
  EXPECT_EQ(descriptionOf(Value::boolean(false)), "0");
  EXPECT_EQ(descriptionOf(Number::integer(-12)), "-12");
  EXPECT_EQ(descriptionOf(Number::real(0.1)), "0.1");
  EXPECT_EQ(descriptionOf(stringOf("a b \"c\" \\ \u00E4\n")), "a b \"c\" \\ \u00E4\n");
  EXPECT_EQ(descriptionOf(stringOf("")), "");
  EXPECT_EQ(descriptionOf(Data::create("\x01\xFF")), "<01ff>");
  EXPECT_EQ(descriptionOf(Date::create(1580472000)), "2020-01-31 12:00:00 +0000");
}

TEST(Description, WritesEmptyCollectionsOnTwoLines) {
  EXPECT_EQ(descriptionOf(arrayOf({})), "(\n)");
  EXPECT_EQ(descriptionOf(dictionaryOf({})), "{\n}");
}

TEST(Description, WritesArraysWithCommasBetweenTheElements) {
  EXPECT_EQ(descriptionOf(arrayOf({stringOf("one")})), "(\n    one\n)");
  EXPECT_EQ(descriptionOf(arrayOf({stringOf("one"), Number::integer(2), Value::null()})),
            "(\n    one,\n    2,\n    <null>\n)");
}

TEST(Description, WritesDictionariesWithASemicolonBehindEachEntry) {
  EXPECT_EQ(descriptionOf(dictionaryOf({{stringOf("b"), stringOf("x y")},
                                        {stringOf("a key"), Number::real(1.5)},
                                        {Number::integer(3), Value::null()}})),
            "{\n    b = \"x y\";\n    \"a key\" = 1.5;\n    3 = <null>;\n}");
}

TEST(Description, IndentsByFourBlanksForEachCollection) {
  const Value value = dictionaryOf(
      {{stringOf("list"), arrayOf({arrayOf({}), dictionaryOf({}),
                                   dictionaryOf({{stringOf("k"), arrayOf({stringOf("v")})}})})},
       {arrayOf({stringOf("key")}), dictionaryOf({})}});
  EXPECT_EQ(descriptionOf(value), R"({
    list = (
        (
        ),
        {
        },
        {
            k = (
                v
            );
        }
    );
    (
        key
    ) = {
    };
})");
}

TEST(Description, WritesOtherValuesInsideCollectionsUnquoted) {
  EXPECT_EQ(descriptionOf(arrayOf({Data::create("abcde"), Date::create(0), Number::real(-0.5),
                                   Value::boolean(true)})),
            "(\n    <61626364 65>,\n    1970-01-01 00:00:00 +0000,\n    -0.5,\n    1\n)");
}

TEST(Description, LeavesStringsOfNamesAndNumbersUnquoted) {
  constexpr auto kPlain = "ABCXYZabcxyz0189_$/:."sv;
  EXPECT_EQ(quotedFormOf(kPlain), kPlain);
  for (int c = 0; c < 128; ++c) {
    const std::string one(1, static_cast<char>(c));
    const bool plain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                       "_$/:."sv.find(static_cast<char>(c)) != std::string_view::npos;
    EXPECT_EQ(quotedFormOf(one).front() != '"', plain) << c;
  }
}

TEST(Description, QuotesAnEmptyString) { EXPECT_EQ(quotedFormOf(""), "\"\""); }

TEST(Description, EscapesInsideQuotes) {
  EXPECT_EQ(quotedFormOf("a\"b"), "\"a\\\"b\"");
  EXPECT_EQ(quotedFormOf("a\\b"), "\"a\\\\b\"");
  EXPECT_EQ(quotedFormOf("a\nb\tc"), "\"a\\nb\\tc\"");
  EXPECT_EQ(quotedFormOf("a\rb"), "\"a\rb\"");
  EXPECT_EQ(quotedFormOf("a-b"), "\"a-b\"");
  EXPECT_EQ(quotedFormOf("a\0b"sv), "\"a\0b\""sv);
  EXPECT_EQ(quotedFormOf("\x7F"), "\"\x7F\"");
}

TEST(Description, WritesCodeUnitsOutsideASCIIInHexadecimal) {
  EXPECT_EQ(quotedFormOf("\u00E4"), "\"\\U00e4\"");
  EXPECT_EQ(quotedFormOf("\u0080"), "\"\\U0080\"");
  EXPECT_EQ(quotedFormOf("x\u20ACy"), "\"x\\U20acy\"");
  EXPECT_EQ(quotedFormOf("\uFFFF"), "\"\\Uffff\"");
  EXPECT_EQ(quotedFormOf("\U00010000"), "\"\\Ud800\\Udc00\"");
  EXPECT_EQ(quotedFormOf("\U0001F600"), "\"\\Ud83d\\Ude00\"");
  EXPECT_EQ(quotedFormOf("\U0010FFFF"), "\"\\Udbff\\Udfff\"");
}

TEST(Description, AppendsToTheText) {
  std::string text = "x";
  appendDescription(text, Number::integer(1));
  appendQuoted(text, "y");
  appendIndentation(text, 2);
  appendIndentation(text, 0);
  EXPECT_EQ(text, "x1y        ");
  appendDescription(text, arrayOf({stringOf("a b")}), 1);
  EXPECT_EQ(text, "x1y        (\n        \"a b\"\n    )");
}

TEST(Description, OfAStringIsTheStringItself) {
  const Ref<String> string = String::create("text");
  EXPECT_EQ(describe(string).get(), string.get());
  EXPECT_EQ(describe(Number::integer(5))->view(), "5");
  EXPECT_EQ(describe(Value())->view(), "(null)");
}

TEST(Description, WritesAsManyLevelsAsItPromises) {
  const auto depth = static_cast<std::size_t>(kDescriptionDepth);
  EXPECT_GT(depth, 512U);
  const std::string text = descriptionOf(nestedArrays(depth, stringOf("x")));
  EXPECT_TRUE(text.starts_with("(\n    (\n"));
  EXPECT_NE(text.find("\n" + std::string(depth * 4, ' ') + "x\n"), std::string::npos);
  EXPECT_TRUE(text.ends_with("    )\n)"));
  EXPECT_EQ(
      reasonOf([&] { static_cast<void>(descriptionOf(nestedArrays(depth + 1, stringOf("x")))); }),
      "nested too deeply");
}

TEST(Description, RaisesForValuesNestedAMillionDeepBeforeItsTextGrows) {
  for (const auto nested : {&nestedArrays, &nestedDictionaries}) {
    const Value value = nested(kMillion, Number::integer(1));
    std::string text;
    EXPECT_EQ(reasonOf([&] { appendDescription(text, value); }), "nested too deeply");
    EXPECT_LT(text.size(), std::size_t{16} * 1024 * 1024);
  }
}

TEST(Description, RaisesForDeepValuesOnASmallStack) {
  for (const auto nested : {&nestedArrays, &nestedDictionaries}) {
    const Value value = nested(kHundredThousand, Number::integer(1));
    std::string reason;
    runOnStackOf(std::size_t{128} * 1024,
                 [&] { reason = reasonOf([&] { static_cast<void>(descriptionOf(value)); }); });
    EXPECT_EQ(reason, "nested too deeply");
  }
}

TEST(Description, OfFlatValuesNeedsNoLargeStack) {
  std::string text;
  runOnStackOf(std::size_t{128} * 1024, [&] {
    text = descriptionOf(arrayOf({dictionaryOf({}), Number::real(0.5)}));
  });
  EXPECT_EQ(text, "(\n    {\n    },\n    0.5\n)");
}

}  // namespace
}  // namespace commandfilter
