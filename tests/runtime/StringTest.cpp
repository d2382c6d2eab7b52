#include "runtime/String.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"

namespace commandfilter {
namespace {

using namespace std::string_view_literals;
using testing::stringOf;

Value ask(std::string_view text, std::string_view selector) {
  return send(stringOf(text), Selector(selector));
}

TEST(String, KeepsItsText) {
  const Ref<String> string = String::create(std::string("a\0b"sv));
  EXPECT_EQ(string->view(), "a\0b"sv);
  EXPECT_EQ(string->text().size(), 3U);
  EXPECT_STREQ(string->cString(), "a");
  EXPECT_EQ(string->length(), 3U);
  EXPECT_FALSE(string->isEmpty());
  EXPECT_TRUE(String::create("")->isEmpty());
}

TEST(String, TakesWhatADeviceSendsForUTF8OrElseForLatin1) {
  EXPECT_EQ(String::fromDeviceText("M1")->view(), "M1");
  EXPECT_EQ(String::fromDeviceText("B\xC3\xBCro")->view(), "B\u00FCro");
  EXPECT_EQ(String::fromDeviceText("B\xFCro \xC3\xBC")->view(), "B\u00FCro \u00C3\u00BC");
  EXPECT_EQ(String::fromDeviceText("\x80\xFF\0"sv)->view(), "\u0080\u00FF\0"sv);
}

TEST(String, ReplacesIllFormedTextWhenItIsCreated) {
  EXPECT_EQ(String::create("a\xFF"
                           "b")
                ->view(),
            "a\uFFFDb");
}

TEST(String, IsNilForIllFormedBytesThatMustBeKept) {
  EXPECT_EQ(String::fromUTF8("a\xC3"), nullptr);
  const RefPtr<String> string = String::fromUTF8("\u00E4\0"sv);
  ASSERT_TRUE(string);
  EXPECT_EQ(string->view(), "\u00E4\0"sv);
}

TEST(String, CountsCodeUnits) {
  EXPECT_EQ(String::create("")->length(), 0U);
  EXPECT_EQ(String::create("abc")->length(), 3U);
  EXPECT_EQ(String::create("\u00E4\u20AC")->length(), 2U);
  EXPECT_EQ(String::create("x\U0001F600")->length(), 3U);
}

TEST(String, EqualsTheSameCharacters) {
  const Value string = stringOf("text");
  EXPECT_TRUE(equal(string, string));
  EXPECT_TRUE(equal(string, stringOf("text")));
  EXPECT_FALSE(equal(string, stringOf("Text")));
  EXPECT_FALSE(equal(string, stringOf("text\0"sv)));
  EXPECT_FALSE(equal(string, Number::integer(1)));
  EXPECT_FALSE(equal(string, Value()));
  // Composed and decomposed forms are different texts.
  EXPECT_FALSE(equal(stringOf("\u00E4"), stringOf("a\u0308")));
  EXPECT_EQ(hashOf(string), hashOf(stringOf("text")));
  EXPECT_NE(hashOf(string), hashOf(stringOf("texu")));
}

TEST(String, OrdersByCodeUnit) {
  // Each stands before the next one in 16-bit units; in bytes, the last two would be exchanged
  // with those before them.
  constexpr std::array kInOrder{
      ""sv,       "\0"sv,         "A"sv,          "AA"sv,         "B"sv,
      "a"sv,      "\u007F"sv,     "\u0080"sv,     "\u07FF"sv,     "\u0800"sv,
      "\uD7FF"sv, "\U00010000"sv, "\U00010001"sv, "\U0001F600"sv, "\U0010FFFF"sv,
      "\uE000"sv, "\uEFFF"sv,     "\uF000"sv,     "\uFFFD"sv,     "\uFFFF"sv,
  };
  for (std::size_t i = 0; i < kInOrder.size(); ++i) {
    for (std::size_t j = 0; j < kInOrder.size(); ++j) {
      const auto left = String::create(std::string(kInOrder[i]));
      const auto right = String::create(std::string(kInOrder[j]));
      EXPECT_EQ(left->compare(*right), i <=> j) << i << " against " << j;
      const auto longLeft = String::create("same " + left->text());
      const auto longRight = String::create("same " + right->text());
      EXPECT_EQ(longLeft->compare(*longRight), i <=> j) << i << " against " << j;
    }
  }
}

TEST(String, PutsAPrefixFirst) {
  EXPECT_TRUE(String::create("ab")->compare(*String::create("abc")) < 0);
  EXPECT_TRUE(String::create("abc")->compare(*String::create("ab")) > 0);
}

TEST(String, DescribesItselfPlainlyOutsideOfCollections) {
  std::string text = ">";
  String::create("a \"b\"\n")->appendDescription(text, 0);
  EXPECT_EQ(text, ">a \"b\"\n");
  text.clear();
  String::create("a \"b\"\n")->appendDescription(text, 1);
  EXPECT_EQ(text, "\"a \\\"b\\\"\\n\"");
}

TEST(String, AnswersItsLength) {
  const Value length = ask("x\U0001F600", "length");
  EXPECT_EQ(length.number().encoding(), 'Q');
  EXPECT_EQ(length.number().longValue(), 3);
}

TEST(String, AnswersTheIntegerThatItBeginsWith) {
  EXPECT_EQ(ask("  -42xyz", "intValue").number().encoding(), 'i');
  EXPECT_EQ(ask("  -42xyz", "intValue").number().longValue(), -42);
  EXPECT_EQ(ask("+7", "intValue").number().longValue(), 7);
  EXPECT_EQ(ask("none", "intValue").number().longValue(), 0);
  EXPECT_EQ(ask("", "intValue").number().longValue(), 0);
  EXPECT_EQ(ask("3.9", "intValue").number().longValue(), 3);
  EXPECT_EQ(ask("-42", "integerValue").number().encoding(), 'q');
  EXPECT_EQ(ask("1\0002"sv, "integerValue").number().longValue(), 1);
}

TEST(String, LimitsTheIntegerToItsWidth) {
  EXPECT_EQ(ask("2147483648", "intValue").number().longValue(), INT32_MAX);
  EXPECT_EQ(ask("-2147483649", "intValue").number().longValue(), INT32_MIN);
  EXPECT_EQ(ask("2147483647", "intValue").number().longValue(), INT32_MAX);
  EXPECT_EQ(ask("9223372036854775808", "integerValue").number().longValue(), INT64_MAX);
  EXPECT_EQ(ask("-9223372036854775809", "integerValue").number().longValue(), INT64_MIN);
}

TEST(String, AnswersTheRealThatItBeginsWith) {
  EXPECT_EQ(ask(" 2.5mm", "doubleValue").number().doubleValue(), 2.5);
  EXPECT_EQ(ask(" 2.5mm", "doubleValue").number().encoding(), 'd');
  EXPECT_EQ(ask("0.1", "floatValue").number().floatValue(), 0.1F);
  EXPECT_EQ(ask("0.1", "floatValue").number().encoding(), 'f');
  EXPECT_EQ(ask("mm", "doubleValue").number().doubleValue(), 0.0);
}

TEST(String, AnswersItselfInOtherForms) {
  EXPECT_EQ(descriptionOf(ask("Stra\u00DFe", "uppercaseString")), "STRASSE");
  EXPECT_EQ(descriptionOf(ask("\u00C4B", "lowercaseString")), "\u00E4b");
  EXPECT_EQ(descriptionOf(ask("\u00E4\0b"sv, "UTF8String")), "\u00E4");
  EXPECT_EQ(descriptionOf(ask("x y", "description")), "x y");
}

TEST(String, GivesTheTextOfAPointerThatMayBeNil) {
  const Ref<String> string = String::create("text");
  EXPECT_EQ(textOf(string.get()), "text");
  EXPECT_EQ(textOf(nullptr), "");
}

}  // namespace
}  // namespace commandfilter
