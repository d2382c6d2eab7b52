#include "SchedulerLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace commandfilter::standard {
namespace {

using ::testing::ElementsAre;

TEST(SingleLine, HasBlanksForWhatControlsSomething) {
  EXPECT_EQ(singleLine("a\tb\r\nc\x7F"
                       "d"),
            "a b c d");
  EXPECT_EQ(singleLine("\x01 a  b \n"), "a b");
  EXPECT_EQ(singleLine("a\xC2\x9B"
                       "b\xE2\x80\xA8"
                       "c"),
            "a b c")
      << "C1 and line separator";
  EXPECT_EQ(singleLine("Gr\xC3\xBC\xC3\x9F"
                       "e \xE9\xBB\x92"),
            "Gr\xC3\xBC\xC3\x9F"
            "e \xE9\xBB\x92");
  EXPECT_EQ(singleLine("\n \n"), "");
}

TEST(SingleLine, IsWellFormed) {
  EXPECT_EQ(singleLine("a\xFF"
                       "b"),
            "a\xEF\xBF\xBD"
            "b");
}

TEST(Beginning, EndsBetweenCharacters) {
  EXPECT_EQ(beginning("abc", 3), "abc");
  EXPECT_EQ(beginning("abcd", 3), "abc");
  EXPECT_EQ(beginning("a\xC3\xBC\xC3\xBC", 4), "a\xC3\xBC");
  EXPECT_EQ(beginning("\xE9\xBB\x92", 2), "");
  EXPECT_EQ(beginning("ab cd", 3), "ab");
}

TEST(Assignment, IsPlainWithoutSpecialCharacters) {
  EXPECT_EQ(assignment("marker-levels", {"1", "-3"}), "marker-levels=1,-3");
  EXPECT_EQ(assignment("marker-colors", {"#000000#FFFFFF", "none"}),
            "marker-colors=#000000#FFFFFF,none");
}

TEST(Assignment, QuotesForTheOptionAndForTheList) {
  EXPECT_EQ(assignment("n", {"a b", "c"}), "n='a b,c'");
  EXPECT_EQ(assignment("n", {"a,b", "c"}), R"(n='a\\,b,c')");
  EXPECT_EQ(assignment("n", {R"(")"}), R"(n='\\"')");
  EXPECT_EQ(assignment("n", {"it's"}), R"(n='it\\\'s')");
  EXPECT_EQ(assignment("n", {R"(\)"}), R"(n='\\\\')");
}

TEST(Keywords, HaveLettersDigitsAndHyphens) {
  EXPECT_TRUE(isKeyword("toner-low-report"));
  EXPECT_FALSE(isKeyword(""));
  EXPECT_FALSE(isKeyword("toner low"));
  EXPECT_FALSE(isKeyword("a,b"));
}

TEST(PPDWords, HaveNothingThatEndsThem) {
  EXPECT_TRUE(isPPDWord("Option1"));
  EXPECT_TRUE(isPPDWord("2Tray+"));
  for (const char* text : {"", "a b", "a/b", "a:b", "a=b", "a\"", "a,b", "\xC3\xBC"}) {
    EXPECT_FALSE(isPPDWord(text)) << text;
  }
}

TEST(Lines, TakeAsManyItemsAsFit) {
  EXPECT_THAT(linesOf("STATE: +", ',', {"a", "b"}), ElementsAre("STATE: +a,b"));
  EXPECT_TRUE(linesOf("STATE: +", ',', {}).empty());
  const std::string half(kLongestLine / 2, 'x');
  EXPECT_THAT(linesOf("P ", ' ', {"a", half, half, "b"}),
              ElementsAre("P a " + half, "P " + half + " b"));
  EXPECT_THAT(linesOf("P ", ' ', {std::string(kLongestLine, 'x'), "b"}), ElementsAre("P b"));
}

TEST(MessageLine, EndsWithFullStopsWhenItIsTooLong) {
  EXPECT_EQ(messageLine("INFO: a\nb"), "INFO: a b");
  const std::string line = messageLine(std::string(kLongestLine + 1, 'x'));
  EXPECT_EQ(line.size(), kLongestLine);
  EXPECT_TRUE(line.ends_with("x..."));
  EXPECT_EQ(messageLine(std::string(kLongestLine, 'x')).size(), kLongestLine);
}

}  // namespace
}  // namespace commandfilter::standard
