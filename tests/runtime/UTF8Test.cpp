#include "runtime/UTF8.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace commandfilter {
namespace {

using namespace std::string_view_literals;

// Ill-formed texts, each with what it becomes: one U+FFFD for each longest part that could have
// begun a character.
const std::vector<std::pair<std::string_view, std::string>>& illFormed() {
  static const std::vector<std::pair<std::string_view, std::string>> cases{
      {"\x80"sv, "\uFFFD"},            // continuation alone
      {"\xBF\xBF"sv, "\uFFFD\uFFFD"},  //
      {"\xC3"sv, "\uFFFD"},            // cut off
      {"\xE2\x82"sv, "\uFFFD"},        //
      {"\xF0\x9F\x98"sv, "\uFFFD"},    //
      {"\xC3"
       "a"sv,
       "\uFFFDa"},  // broken off
      {"\xE2\x82"
       "a"sv,
       "\uFFFDa"},  //
      {"\xF0\x9F\x98"
       "a"sv,
       "\uFFFDa"},                                                   //
      {"\xE2\xC3\xA4"sv, "\uFFFD\u00E4"},                            // a new character too early
      {"\xC0\xAF"sv, "\uFFFD\uFFFD"},                                // overlong
      {"\xC1\xBF"sv, "\uFFFD\uFFFD"},                                //
      {"\xE0\x9F\xBF"sv, "\uFFFD\uFFFD\uFFFD"},                      //
      {"\xF0\x8F\xBF\xBF"sv, "\uFFFD\uFFFD\uFFFD\uFFFD"},            //
      {"\xED\xA0\x80"sv, "\uFFFD\uFFFD\uFFFD"},                      // surrogates
      {"\xED\xBF\xBF"sv, "\uFFFD\uFFFD\uFFFD"},                      //
      {"\xF4\x90\x80\x80"sv, "\uFFFD\uFFFD\uFFFD\uFFFD"},            // above U+10FFFF
      {"\xF5\x80\x80\x80"sv, "\uFFFD\uFFFD\uFFFD\uFFFD"},            //
      {"\xF8\x88\x80\x80\x80"sv, "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},  // five bytes
      {"\xFE\xFF"sv, "\uFFFD\uFFFD"},                                // never a byte of UTF-8
  };
  return cases;
}

TEST(UTF8, AcceptsEveryCharacter) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    std::string text;
    appendCodePoint(text, c);
    ASSERT_TRUE(isUTF8(text)) << std::hex << static_cast<unsigned>(c);
    std::size_t offset = 0;
    ASSERT_EQ(nextCodePoint(text, offset), c);
    ASSERT_EQ(offset, text.size());
    ASSERT_EQ(lengthInCodeUnits(text), c < 0x10000 ? 1U : 2U);
    ASSERT_EQ(isASCII(text), c < 0x80);
  }
}

TEST(UTF8, AcceptsAnEmptyTextAndNUL) {
  EXPECT_TRUE(isUTF8(""));
  EXPECT_TRUE(isUTF8("\0a\0"sv));
  EXPECT_TRUE(isUTF8(std::string_view()));
  EXPECT_TRUE(isASCII(std::string_view()));
  EXPECT_EQ(lengthInCodeUnits(""), 0U);
}

TEST(UTF8, RefusesIllFormedText) {
  for (const auto& [text, replaced] : illFormed()) EXPECT_FALSE(isUTF8(text)) << replaced;
}

TEST(UTF8, FindsIllFormedBytesAtEveryPlace) {
  for (const auto& [text, replaced] : illFormed()) {
    for (std::size_t before = 0; before < 20; ++before) {
      for (const std::size_t after : {0U, 1U, 7U, 8U, 9U}) {
        const std::string around =
            std::string(before, 'b') + std::string(text) + std::string(after, 'x');
        EXPECT_FALSE(isUTF8(around));
        EXPECT_FALSE(isASCII(around));
        EXPECT_EQ(toWellFormedUTF8(around),
                  std::string(before, 'b') + replaced + std::string(after, 'x'));
      }
    }
  }
}

TEST(UTF8, LeavesWellFormedTextAlone) {
  constexpr auto kText = "plain \u00E4\u20AC\U0001F600 text \0 end"sv;
  EXPECT_EQ(toWellFormedUTF8(kText), kText);
}

TEST(UTF8, SeesOneByteBeyondASCIIAtEveryPlace) {
  for (std::size_t size = 1; size < 40; ++size) {
    EXPECT_TRUE(isASCII(std::string(size, '\x7F')));
    for (std::size_t place = 0; place < size; ++place) {
      std::string text(size, 'a');
      text[place] = '\x80';
      EXPECT_FALSE(isASCII(text)) << place << " of " << size;
    }
  }
}

TEST(UTF8, CountsCodeUnitsOfMixedText) {
  EXPECT_EQ(lengthInCodeUnits("a\u00E4\u20AC\U0001F600"), 5U);
}

TEST(UTF8, WalksOverCodePoints) {
  constexpr auto kText = "a\u00E4\u20AC\U0001F600"sv;
  std::u32string found;
  for (std::size_t offset = 0; offset < kText.size();) found += nextCodePoint(kText, offset);
  EXPECT_EQ(found, U"a\u00E4\u20AC\U0001F600");
}

TEST(UTF8, AppendsAReplacementForWhatNoTextCanHold) {
  for (const char32_t c :
       {char32_t{0xD800}, char32_t{0xDFFF}, char32_t{0x110000}, char32_t{0xFFFFFFFF}}) {
    std::string text = "x";
    appendCodePoint(text, c);
    EXPECT_EQ(text, "x\uFFFD");
  }
}

}  // namespace
}  // namespace commandfilter
