#include "filter/ACommandFilterFile.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "runtime/Cast.h"
#include "runtime/String.h"

namespace commandfilter {
namespace {

using namespace std::string_literals;

using Commands = std::optional<std::vector<std::string>>;

Commands commandsIn(std::string_view data) {
  const RefPtr<Array> array = ACommandFilterFile::commandsInData(data);
  if (!array) return std::nullopt;
  std::vector<std::string> commands;
  for (const Value& command : *array) {
    const auto* string = castTo<String>(command);
    commands.push_back(string != nullptr ? string->text() : "no string");
  }
  return commands;
}

Commands list(std::vector<std::string> commands) { return commands; }
const Commands kNil;

TEST(CommandFile, KeepsCommandsInTheOrderOfTheFile) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\nClean all\nPrintSelfTestPage\nClean all\n"),
            list({"Clean all", "PrintSelfTestPage", "Clean all"}));
}

TEST(CommandFile, HasNoCommandsWithTheHeaderLineAlone) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\n"), list({}));
}

TEST(CommandFile, IsNilWithoutAnyLineBreak) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND"), kNil);
  EXPECT_EQ(commandsIn("Clean"), kNil);
  EXPECT_EQ(commandsIn(""), kNil);
}

TEST(CommandFile, IsNilWhenTheFirstLineIsNoHeader) {
  EXPECT_EQ(commandsIn("Clean\n"), kNil);
  EXPECT_EQ(commandsIn("\n#CUPS-COMMAND\nClean\n"), kNil);
  EXPECT_EQ(commandsIn("# comment\n#CUPS-COMMAND\nClean\n"), kNil);
}

TEST(CommandFile, ComparesTheHeaderWithRegardToCase) {
  EXPECT_EQ(commandsIn("#cups-command\nClean\n"), kNil);
  EXPECT_EQ(commandsIn("#Cups-Command\nClean\n"), kNil);
}

TEST(CommandFile, NeedsTheWholeHeaderText) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAN\nClean\n"), kNil);
  EXPECT_EQ(commandsIn("CUPS-COMMAND\nClean\n"), kNil);
  EXPECT_EQ(commandsIn("# CUPS-COMMAND\nClean\n"), kNil);
}

TEST(CommandFile, FindsTheHeaderAnywhereInTheFirstLine) {
  EXPECT_EQ(commandsIn("#CUPS-COMMANDS and more\nClean\n"), list({"Clean"}));
  EXPECT_EQ(commandsIn("  \t#CUPS-COMMAND\t \nClean\n"), list({"Clean"}));
  EXPECT_EQ(commandsIn("## #CUPS-COMMAND\nClean\n"), list({"Clean"}));
}

TEST(CommandFile, TakesAFirstLineThatIsNoCommentForACommandToo) {
  EXPECT_EQ(commandsIn("word #CUPS-COMMAND\nClean\n"), list({"word #CUPS-COMMAND", "Clean"}));
  EXPECT_EQ(commandsIn("\tword #CUPS-COMMAND \n"), list({"word #CUPS-COMMAND"}));
}

TEST(CommandFile, TrimsLinesAndSkipsCommentsAndEmptyOnes) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\n  Clean  \n# comment\n\nClean all\n"),
            list({"Clean", "Clean all"}));
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\n \t \t\n\t# comment after a tab\n\tClean\t\n"),
            list({"Clean"}));
}

TEST(CommandFile, KeepsBlanksInsideALineAndTheCaseOfLetters) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\nClean \t All  #1\n"), list({"Clean \t All  #1"}));
}

TEST(CommandFile, TakesALastLineWithoutALineBreak) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\nClean"), list({"Clean"}));
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\nClean\nTest  "), list({"Clean", "Test"}));
}

TEST(CommandFile, TakesCarriageReturnsAndLineFeedsLikeLineFeeds) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\r\nClean\r\nTest\r\n"), list({"Clean", "Test"}));
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\rClean\rTest"), list({"Clean", "Test"}));
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\n\rClean\n\rTest"), list({"Clean", "Test"}));
}

TEST(CommandFile, EndsALineAtEachUnicodeLineSeparator) {
  const std::vector<std::string> separators{"\n",       "\v",           "\f",          "\r",
                                            "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};
  for (const std::string& separator : separators) {
    std::string data = "#CUPS-COMMAND";
    data.append(separator).append("Clean").append(separator).append("Test").append(separator);
    EXPECT_EQ(commandsIn(data), list({"Clean", "Test"})) << ::testing::PrintToString(separator);
  }
}

TEST(CommandFile, DoesNotEndALineAtOtherControlsAndSpaces) {
  // File to unit separators, zero-width space, word joiner.
  for (const std::string other : {"\x1C", "\x1D", "\x1E", "\x1F", "\xE2\x80\x8B", "\xE2\x81\xA0"}) {
    EXPECT_EQ(commandsIn("#CUPS-COMMAND\nA" + other + "B\n"), list({"A" + other + "B"}))
        << ::testing::PrintToString(other);
  }
}

TEST(CommandFile, TrimsEverySpaceOfUnicodeButNothingElse) {
  // No-break space, ogham space, em space, narrow and medium ones, ideographic space.
  for (const std::string space : {"\t", " ", "\xC2\xA0", "\xE1\x9A\x80", "\xE2\x80\x83",
                                  "\xE2\x80\xAF", "\xE2\x81\x9F", "\xE3\x80\x80"}) {
    EXPECT_EQ(commandsIn("#CUPS-COMMAND\n" + space + "Clean" + space + space + "\n"),
              list({"Clean"}))
        << ::testing::PrintToString(space);
  }
  for (const std::string other : {"\xE2\x80\x8B", "\xE2\x81\xA0", "\x08", "\x1F"}) {
    EXPECT_EQ(commandsIn("#CUPS-COMMAND\n" + other + "Clean\n"), list({other + "Clean"}))
        << ::testing::PrintToString(other);
  }
}

TEST(CommandFile, SkipsALineOfUnicodeSpacesAndAnIndentedComment) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\n\xC2\xA0\xE3\x80\x80\n\xE2\x80\x83# comment\nClean\n"),
            list({"Clean"}));
}

TEST(CommandFile, KeepsNULInsideACommand) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\nCle\0an\n\0\n"s), list({"Cle\0an"s, "\0"s}));
  EXPECT_EQ(commandsIn("\0#CUPS-COMMAND\nClean\n"s), list({"\0#CUPS-COMMAND"s, "Clean"}));
}

TEST(CommandFile, KeepsTextBeyondASCII) {
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\nR\xC3\xA9initialiser \xF0\x9F\x96\xA8\n"),
            list({"R\xC3\xA9initialiser \xF0\x9F\x96\xA8"}));
}

TEST(CommandFile, IsNilWhenAnyByteIsNotUTF8) {
  const std::vector<std::string> sequences{
      "\xFF",              // never part of UTF-8
      "\x80",              // a continuation alone
      "\xE2\x80",          // cut short
      "\xC0\xAF",          // overlong
      "\xED\xA0\x80",      // half of a surrogate pair
      "\xF4\x90\x80\x80",  // above U+10FFFF
  };
  for (const std::string& bad : sequences) {
    EXPECT_EQ(commandsIn("#CUPS-COMMAND\nClean\n" + bad), kNil) << ::testing::PrintToString(bad);
    EXPECT_EQ(commandsIn(bad + "#CUPS-COMMAND\nClean\n"), kNil) << ::testing::PrintToString(bad);
    EXPECT_EQ(commandsIn("#CUPS-COMMAND\n# " + bad + "\nClean\n"), kNil)
        << ::testing::PrintToString(bad);
  }
}

TEST(CommandFile, IsNilForUTF16) {
  std::string wide = "\xFF\xFE";
  for (const char c : "#CUPS-COMMAND\nClean\n"s) wide.append({c, '\0'});
  EXPECT_EQ(commandsIn(wide), kNil);
}

TEST(CommandFile, OverlooksAMarkOfTheEncodingAtTheStartOnly) {
  EXPECT_EQ(commandsIn("\xEF\xBB\xBF#CUPS-COMMAND\nClean\n"), list({"Clean"}));
  EXPECT_EQ(commandsIn("#CUPS-COMMAND\n\xEF\xBB\xBF# no comment\n"),
            list({"\xEF\xBB\xBF# no comment"}));
  EXPECT_EQ(commandsIn("\xEF\xBB\xBF"), kNil);
}

}  // namespace
}  // namespace commandfilter
