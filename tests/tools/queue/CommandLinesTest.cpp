// What attaching does to PPDs: cases/NAME.ppd becomes cases/NAME.attached, and itself again.
#include "CommandLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "PPDText.h"
#include "ToolError.h"
#include "support/File.h"

namespace commandfilter::tools {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using Words = std::vector<std::string>;

const Words kCommands{"ReportLevels", "Clean"};

// The text with other line ends.
std::string withLineEnds(std::string_view text, std::string_view end) {
  std::string result;
  for (const char c : text) {
    if (c == '\n') {
      result.append(end);
    } else {
      result.push_back(c);
    }
  }
  return result;
}

CommandLines linesOf(std::string_view ppd) { return commandLinesOf(PPDText(ppd)); }

class AttachingAPPD : public ::testing::TestWithParam<std::string> {
 protected:
  [[nodiscard]] static std::string read(const std::string& suffix) {
    return testing::readFile(fs::path(CASES) / (GetParam() + suffix));
  }
  [[nodiscard]] static bool isByHand() { return GetParam().starts_with("by-hand"); }

  const std::string before_ = read(".ppd");
  const std::string attached_ = read(".attached");
};

TEST_P(AttachingAPPD, WritesItsLinesAndNothingElse) {
  EXPECT_EQ(attachCommands(before_, kCommands), attached_);
  EXPECT_THAT(linesOf(attached_).filters, ElementsAre("commandfilter"));
  EXPECT_TRUE(linesOf(attached_).isAttached);
}

TEST_P(AttachingAPPD, IsTakenBackExactly) {
  if (isByHand()) {
    EXPECT_FALSE(linesOf(detachCommands(attached_)).isAttached);
    EXPECT_EQ(detachCommands(attached_), detachCommands(before_));
  } else {
    EXPECT_EQ(detachCommands(attached_), before_);
    EXPECT_EQ(detachCommands(before_), before_);
  }
}

TEST_P(AttachingAPPD, KeepsTheLineEnds) {
  for (const char* end : {"\r\n", "\r"}) {
    const std::string before = withLineEnds(before_, end);
    const std::string attached = withLineEnds(attached_, end);
    EXPECT_EQ(attachCommands(before, kCommands), attached);
    if (!isByHand()) {
      EXPECT_EQ(detachCommands(attached), before);
    }
  }
}

TEST_P(AttachingAPPD, TwiceIsAttachingOnce) {
  EXPECT_EQ(attachCommands(attached_, kCommands), attached_);
}

TEST_P(AttachingAPPD, AgainTakesWhatPlugInsNowCarryOut) {
  const std::string more = attachCommands(attached_, {"ReportLevels", "Clean", "Align"});
  EXPECT_EQ(more, attachCommands(before_, {"ReportLevels", "Clean", "Align"}));
  EXPECT_EQ(attachCommands(more, kCommands), attached_) << "and no longer what has gone";
}

std::vector<std::string> caseNames() {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(CASES)) {
    if (entry.path().extension() == ".ppd") names.push_back(entry.path().stem().string());
  }
  return names;
}

INSTANTIATE_TEST_SUITE_P(Cases, AttachingAPPD, ::testing::ValuesIn(caseNames()),
                         [](const auto& testCase) {
                           std::string name = testCase.param;
                           std::erase(name, '-');
                           return name;
                         });

TEST(CommandLines, TellWhoCarriesCommandsOut) {
  const auto filtersOf = [](std::string_view lines) {
    return linesOf("*PPD-Adobe: \"4.3\"\n" + std::string(lines)).filters;
  };
  EXPECT_THAT(filtersOf(""), ElementsAre("commandtops"));
  EXPECT_THAT(filtersOf("*cupsFilter: \"application/vnd.cups-postscript 0 -\"\n"),
              ElementsAre("commandtops"));
  EXPECT_THAT(filtersOf("*cupsFilter: \"application/vnd.cups-raster 0 -\"\n"), IsEmpty());
  EXPECT_THAT(filtersOf("*cupsFilter: \"application/vnd.cups-command 0 a/b\"\n"
                        "*cupsFilter: \"application/vnd.cups-command 0 c\"\n"),
              ElementsAre("b", "c"));
  EXPECT_THAT(filtersOf("*cupsFilter: \"application/vnd.cups-command 0 b\"\n"
                        "*cupsFilter2: \"image/urf image/urf 0 -\"\n"),
              IsEmpty())
      << "the scheduler does not look at the older kind then";
  EXPECT_TRUE(linesOf("*PPD-Adobe: \"4.3\"\n").isImplied);
}

TEST(CommandLines, ListCommandsOnce) {
  const auto commandsOf = [](const std::string& value) {
    return linesOf("*cupsCommands: \"" + value + "\"\n").commands;
  };
  EXPECT_THAT(commandsOf("A b  a\tC"), ElementsAre("A", "b", "C"));
  EXPECT_THAT(commandsOf("none"), IsEmpty());
  EXPECT_THAT(commandsOf(""), IsEmpty());
}

TEST(CommandLines, AreNotMendedWhenTheirMarksAreDamaged) {
  const std::string attached = attachCommands("*PPD-Adobe: \"4.3\"\n*NickName: \"x\"\n", kCommands);
  for (const std::string mark : {"*% commandfilter-queue: begin", "*% commandfilter-queue: end"}) {
    std::string damaged = attached;
    damaged.replace(damaged.find(mark), mark.size(), "*% gone");
    EXPECT_THROW(static_cast<void>(detachCommands(damaged)), ToolError);
    EXPECT_THROW(static_cast<void>(attachCommands(damaged, {})), ToolError);
    EXPECT_THROW(static_cast<void>(detachCommands(attached + mark + "\n")), ToolError);
  }
}

// Texts of pieces in any order: hardly one is a PPD, each is given back.
TEST(CommandLines, AreTakenBackFromAnyText) {
  const Words pieces = {"*PPD-Adobe: \"4.3\"",
                        "*cupsFilter: \"application/vnd.cups-command 0 other\"",
                        "*cupsFilter: \"application/vnd.cups-command\"",
                        "*cupsFilter: \"\"",
                        "*cupsFilter:",
                        "*cupsFilter2: \"a/b c/d 0 x\"",
                        "*cupsFilter2: \"application/vnd.cups-command q/r 0 z\"",
                        "*cupsCommands: \"A B",
                        "*cupsCommands: \"none\"",
                        "\"",
                        "*End",
                        "\n",
                        "\r",
                        "\r\n",
                        "*%",
                        "*",
                        "x",
                        " ",
                        ":"};
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same texts each time
  int attached = 0;
  for (int i = 0; i < 20'000; ++i) {
    std::string text;
    for (std::size_t count = random() % 14; count > 0; --count) {
      text.append(pieces[random() % pieces.size()]);
    }
    if (PPDText(text).statements().empty()) continue;
    const std::string after = attachCommands(text, kCommands);
    ASSERT_EQ(attachCommands(after, kCommands), after) << text;
    ASSERT_EQ(detachCommands(after), text);
    ++attached;
  }
  EXPECT_GT(attached, 1'000);
}

TEST(CommandLines, NeedStatements) {
  for (const char* text : {"", "\n", "text", "*% comment\n"}) {
    EXPECT_THROW(static_cast<void>(attachCommands(text, kCommands)), ToolError) << text;
    EXPECT_EQ(detachCommands(text), text);
  }
}

TEST(CommandLines, SayNoneWhereNothingIsCarriedOut) {
  const std::string attached = attachCommands("*PPD-Adobe: \"4.3\"\n", {});
  EXPECT_THAT(attached, HasSubstr("*cupsCommands: \"none\"\n"));
}

TEST(CommandLines, StayWithinTheLengthOfALine) {
  Words many;
  for (int i = 0; i < 200; ++i) many.push_back("Command" + std::to_string(i));
  const std::string attached = attachCommands("*PPD-Adobe: \"4.3\"\n", many);
  const PPDText text(attached);
  for (const PPDLine& line : text.lines()) EXPECT_LE(line.text.size(), 255U);
  EXPECT_EQ(linesOf(attached).commands, many);
  EXPECT_EQ(detachCommands(attached), "*PPD-Adobe: \"4.3\"\n");
}

TEST(ListedWord, IsTheFirstThatAPPDCanHold) {
  EXPECT_EQ(listedWord("Clean all"), "Clean");
  EXPECT_EQ(listedWord("  Clean"), "Clean");
  EXPECT_EQ(listedWord(""), "");
  EXPECT_EQ(listedWord("\"quoted\""), "");
  EXPECT_EQ(listedWord("<41>"), "");
  EXPECT_EQ(listedWord("R\xC3\xA4umen"), "");
}

TEST(PPDText, GivesItsBytesBack) {
  for (const std::string& text :
       {std::string(), std::string("\n"), std::string("a"), std::string("a\rb\r\nc\n\rd"),
        std::string("\r\n\r\n"), std::string("a\0b\n\xFF", 6)}) {
    EXPECT_EQ(PPDText(text).bytes(), text);
  }
}

TEST(PPDText, FindsStatementsOutsideOfValues) {
  const PPDText text(
      "*A: one\n*B Option/Text: \"two\n*C: \"three\"\n*End\n*% *D: x\n*E:\"f\"\n*F: \"open\n*G: "
      "x\n");
  const std::vector<PPDStatement> found = text.statements();
  ASSERT_EQ(found.size(), 4U);
  EXPECT_EQ(found[0].value, "one");
  EXPECT_EQ(found[1].keyword, "B");
  EXPECT_EQ(found[1].value, "two\n*C: ");
  EXPECT_EQ(found[1].first, 1U);
  EXPECT_EQ(found[1].behind, 4U);
  EXPECT_EQ(found[2].keyword, "E");
  EXPECT_EQ(found[2].value, "f");
  EXPECT_EQ(found[3].behind, 8U) << "a value without its end is the rest";
}

}  // namespace
}  // namespace commandfilter::tools
