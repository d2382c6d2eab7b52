// admtemplate repl at a terminal.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "TerminalSession.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::HasSubstr;

constexpr std::string_view kTerminalTemplate = R"(<plist version="1.0"><dict>
<key>TemplateValues</key><dict>
  <key>Levels</key><dict><key>Value</key><string>"first"</string></dict>
  <key>Low</key><dict><key>Value</key><string>1</string></dict>
</dict>
<key>TemplateConstants</key><dict><key>Limit</key><string>20</string></dict>
</dict></plist>
)";
constexpr std::string_view kUp = "\x1b[A";
constexpr std::string_view kEnd = "\x04";

class ReplTerminal : public ::testing::Test {
 protected:
  ReplTerminal() { writeFile(template_, kTerminalTemplate); }
  [[nodiscard]] TerminalSession start() const {
    return TerminalSession({ADMTEMPLATE, "repl", template_},
                           {"PATH=/usr/bin:/bin", "TERM=xterm", "HOME=" + folder_.path().string(),
                            "XDG_STATE_HOME=" + state_.string()});
  }
  [[nodiscard]] std::filesystem::path history() const { return state_ / "admtemplate" / "history"; }

  TemporaryFolder folder_;
  std::string template_ = (folder_.path() / "template.plist").string();
  std::filesystem::path state_ = folder_.path() / "state";
};

TEST_F(ReplTerminal, ShowsAPromptAndEndsWithControlD) {
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  session.type("1 + 2\n");
  EXPECT_TRUE(session.waitFor("\n12\r\n"));
  EXPECT_EQ(session.finish(kEnd), 0);
}

TEST_F(ReplTerminal, KeepsAHistoryForTheNextTime) {
  {
    TerminalSession session = start();
    ASSERT_TRUE(session.waitForPrompt());
    session.type("\"a\" + \"b\"\n");
    ASSERT_TRUE(session.waitFor("\nab\r\n"));
    EXPECT_EQ(session.finish(kEnd), 0);
  }
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(history()).permissions(),
            perms::owner_read | perms::owner_write);
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  session.type(kUp);
  ASSERT_TRUE(session.waitFor("\"a\" + \"b\""));
  session.type(" + \"c\"\n");
  EXPECT_TRUE(session.waitFor("\nabc\r\n"));
}

TEST_F(ReplTerminal, WorksWhereNoHistoryCanBeKept) {
  writeFile(state_, "no folder");
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  session.type("1 + 2\n");
  EXPECT_TRUE(session.waitFor("\n12\r\n"));
  EXPECT_EQ(session.finish(kEnd), 0);
  EXPECT_EQ(session.output().find("istory"), std::string::npos);
}

TEST_F(ReplTerminal, CompletesANameWithTheTabKey) {
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  session.type("$L\t");
  ASSERT_TRUE(session.waitFor("imit"));
  session.type(" + _GetS\t");
  ASSERT_TRUE(session.waitFor("ize("));
  session.type("@nil)\n");
  EXPECT_TRUE(session.waitFor("\n200\r\n"));
}

TEST_F(ReplTerminal, ListsWhatAWordCanBecome) {
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  session.type("[L\t");
  EXPECT_TRUE(session.waitFor("Levels  Low"));
  session.type("ow]\n");
  EXPECT_TRUE(session.waitFor("\n1\r\n"));
}

TEST_F(ReplTerminal, GivesALineUpWithControlC) {
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  session.type("1 + 1");
  ASSERT_TRUE(session.waitFor("1 + 1"));
  session.type("\x03");
  EXPECT_TRUE(session.typeUntil("2 + 2\n", "\n22\r\n"));
  EXPECT_EQ(session.finish(kEnd), 0);
}

TEST_F(ReplTerminal, EndsByASignal) {
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  kill(session.process(), SIGTERM);
  EXPECT_EQ(session.finish(), -1);
}

TEST_F(ReplTerminal, ReadsTheFilesAgain) {
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  session.type("[Levels]\n");
  ASSERT_TRUE(session.waitFor("\nfirst\r\n"));
  std::string changed(kTerminalTemplate);
  changed.replace(changed.find("first"), 5, "second");
  writeFile(template_, changed);
  session.type(":reload\n[Levels]\n");
  EXPECT_TRUE(session.waitFor("\nsecond\r\n"));
  writeFile(template_, "<plist><dict><key>");
  session.type(":reload\n[Levels]\n");
  EXPECT_TRUE(session.waitFor("template " + template_));
  EXPECT_TRUE(session.waitFor("\nsecond\r\n"));
}

TEST_F(ReplTerminal, TakesTextInUTF8) {
  TerminalSession session = start();
  ASSERT_TRUE(session.waitForPrompt());
  session.type("\"\xC3\xA9\xE2\x82\xAC\" + 1\n");
  EXPECT_TRUE(
      session.waitFor("\n\xC3\xA9\xE2\x82\xAC"
                      "1\r\n"));
}

}  // namespace
}  // namespace commandfilter::testing
