#include "SourceExcerpt.h"

#include <gtest/gtest.h>

namespace commandfilter::tools {
namespace {

TEST(SourceExcerpt, MarksEachCharacterOfTheRange) {
  EXPECT_EQ(sourceExcerpt("1 + _Foo(2)", {4, 8}, "  "),
            "  1 + _Foo(2)\n"
            "      ^^^^\n");
}

TEST(SourceExcerpt, HasOneCaretForAnEmptyRangeAndBehindTheText) {
  EXPECT_EQ(sourceExcerpt("ab", {1, 1}, ""), "ab\n ^\n");
  EXPECT_EQ(sourceExcerpt("ab", {2, 3}, ""), "ab\n  ^\n");
  EXPECT_EQ(sourceExcerpt("ab", {70, 80}, ""), "ab\n  ^\n");
  EXPECT_EQ(sourceExcerpt("", {0, 0}, ""), "\n^\n");
}

TEST(SourceExcerpt, ShowsTheLineOfTheRangeOnly) {
  EXPECT_EQ(sourceExcerpt("one\ntwo + x\nthree", {10, 11}, ""),
            "two + x\n"
            "      ^\n");
  EXPECT_EQ(sourceExcerpt("one\r\ntwo", {5, 8}, ""), "two\n^^^\n");
  EXPECT_EQ(sourceExcerpt("(a\nb)", {0, 5}, ""), "(a\n^^\n");
}

TEST(SourceExcerpt, KeepsTabsInFrontOfTheCaret) {
  EXPECT_EQ(sourceExcerpt("\tx + y", {5, 6}, ""), "\tx + y\n\t    ^\n");
}

TEST(SourceExcerpt, CountsUnitsInTheRangeAndColumnsInTheCarets) {
  // The smiling face is two units, one character, and takes two columns of a terminal.
  EXPECT_EQ(sourceExcerpt("\"\xF0\x9F\x98\x80\" + x", {7, 8}, ""),
            "\"\xF0\x9F\x98\x80\" + x\n       ^\n");
  EXPECT_EQ(sourceExcerpt("\xC3\xA9\xC3\xA9", {0, 2}, ""), "\xC3\xA9\xC3\xA9\n^^\n");
  EXPECT_EQ(sourceExcerpt("\xF0\x9F\x98\x80", {0, 2}, ""), "\xF0\x9F\x98\x80\n^^\n");
  // An accent of its own, and two Chinese characters with a tab in between.
  EXPECT_EQ(sourceExcerpt("e\xCC\x81 + x", {5, 6}, ""), "e\xCC\x81 + x\n    ^\n");
  EXPECT_EQ(sourceExcerpt("\xE6\x97\xA5\t\xE6\x9C\xAC x", {4, 5}, ""),
            "\xE6\x97\xA5\t\xE6\x9C\xAC x\n  \t   ^\n");
}

}  // namespace
}  // namespace commandfilter::tools
