#include "runtime/Text.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter {
namespace {

using namespace std::string_view_literals;

constexpr char32_t kBeyondUnicode = 0x110000;

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  for (std::size_t start = 0; start < text.size();) {
    const LineEnd end = findLineEnd(text, start);
    lines.push_back(text.substr(start, end.offset - start));
    start = end.next;
  }
  return lines;
}

TEST(Text, LowersASCII) {
  EXPECT_EQ(lowercase("HELLO wORLD 123 @[`{"), "hello world 123 @[`{");
  EXPECT_EQ(lowercase(""), "");
  EXPECT_EQ(lowercase("A\0B"sv), "a\0b"sv);
}

TEST(Text, LowersBeyondASCII) {
  EXPECT_EQ(lowercase("\u00C4\u00D6\u00DC"), "\u00E4\u00F6\u00FC");
  EXPECT_EQ(lowercase("\u0416"), "\u0436");
  EXPECT_EQ(lowercase("\U00010400"), "\U00010428");
  EXPECT_EQ(lowercase("\u1E9E\u00DF"), "\u00DF\u00DF");
  EXPECT_EQ(lowercase("\u4E2D"), "\u4E2D");
}

TEST(Text, LowersASigmaByItsPlaceInTheWord) {
  EXPECT_EQ(lowercase("\u039F\u0394\u039F\u03A3"), "\u03BF\u03B4\u03BF\u03C2");
  EXPECT_EQ(lowercase("\u03A3\u039F\u03A3 \u03A3"), "\u03C3\u03BF\u03C2 \u03C3");
}

TEST(Text, LowersADottedIWithoutAskingForTheLanguage) {
  EXPECT_EQ(lowercase("\u0130"), "i\u0307");
  EXPECT_EQ(lowercase("I\u0131\u00C4"), "i\u0131\u00E4");
}

TEST(Text, Raises) {
  EXPECT_EQ(uppercase("hello World 123 @[`{"), "HELLO WORLD 123 @[`{");
  EXPECT_EQ(uppercase("stra\u00DFe"), "STRASSE");
  EXPECT_EQ(uppercase("\uFB01"), "FI");
  EXPECT_EQ(uppercase("i\u0131\u00E4"), "II\u00C4");
  EXPECT_EQ(uppercase(""), "");
}

TEST(Text, GrowsWithItsCaseMapping) {
  std::string text;
  std::string expected;
  for (int i = 0; i < 1000; ++i) {
    text += "\u0390";
    expected += "\u0399\u0308\u0301";
  }
  EXPECT_EQ(uppercase(text), expected);
}

TEST(Text, MapsWhatHoldsNUL) { EXPECT_EQ(lowercase("\u00C4\0B"sv), "\u00E4\0b"sv); }

TEST(Text, KnowsEveryWhitespace) {
  const std::set<char32_t> expected{'\t',   ' ',    0xA0,   0x1680, 0x2000, 0x2001,
                                    0x2002, 0x2003, 0x2004, 0x2005, 0x2006, 0x2007,
                                    0x2008, 0x2009, 0x200A, 0x202F, 0x205F, 0x3000};
  std::set<char32_t> found;
  for (char32_t c = 0; c <= kBeyondUnicode; ++c) {
    if (isWhitespace(c)) found.insert(c);
  }
  EXPECT_EQ(found, expected);
}

TEST(Text, KnowsEveryNewline) {
  const std::set<char32_t> expected{0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029};
  std::set<char32_t> found;
  for (char32_t c = 0; c <= kBeyondUnicode; ++c) {
    if (isNewline(c)) found.insert(c);
  }
  EXPECT_EQ(found, expected);
}

TEST(Text, IsTrimmedAtBothEnds) {
  EXPECT_EQ(trimmed(" \t a b \u00A0\u3000"), "a b");
  EXPECT_EQ(trimmed("\u2003\u00E4\u2003"), "\u00E4");
  EXPECT_EQ(trimmed("ab"), "ab");
  EXPECT_EQ(trimmed(""), "");
  EXPECT_EQ(trimmed(" \u3000\t"), "");
  EXPECT_EQ(trimmed("\U0001F600 "), "\U0001F600");
}

TEST(Text, KeepsLineEndsAndOtherCharactersWhenItIsTrimmed) {
  EXPECT_EQ(trimmed(" \n a \r "), "\n a \r");
  EXPECT_EQ(trimmed("\u200Ba\uFEFF"), "\u200Ba\uFEFF");
  EXPECT_EQ(trimmed("\0 a"sv), "\0 a"sv);
}

TEST(Text, EndsALineAtEveryNewline) {
  EXPECT_EQ(linesOf("a\nb\vc\fd\re\u0085f\u2028g\u2029h"),
            (std::vector{"a"sv, "b"sv, "c"sv, "d"sv, "e"sv, "f"sv, "g"sv, "h"sv}));
  EXPECT_EQ(linesOf("a\r\nb"), (std::vector{"a"sv, ""sv, "b"sv}));
  EXPECT_EQ(linesOf("\n\na\n"), (std::vector{""sv, ""sv, "a"sv}));
  EXPECT_EQ(linesOf("\u00E4\u20AC\U0001F600\u2027\u202A"),
            (std::vector{"\u00E4\u20AC\U0001F600\u2027\u202A"sv}));
  EXPECT_TRUE(linesOf("").empty());
}

TEST(Text, FindsALineEndFromWhereItStarts) {
  const LineEnd first = findLineEnd("ab\u2028cd", 0);
  EXPECT_EQ(first.offset, 2U);
  EXPECT_EQ(first.next, 5U);
  const LineEnd second = findLineEnd("ab\u2028cd", 5);
  EXPECT_EQ(second.offset, 7U);
  EXPECT_EQ(second.next, 7U);
  EXPECT_EQ(findLineEnd("ab", 2).offset, 2U);
  EXPECT_EQ(findLineEnd("a\0\n"sv, 0).offset, 2U);
}

}  // namespace
}  // namespace commandfilter
