// Command jobs from lp to the backend.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "integration/JobFixture.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr std::string_view kHeader = "#CUPS-COMMAND\n";

// The command lines of the running processes that contain the text.
std::vector<std::string> processesNaming(std::string_view text) {
  std::vector<std::string> found;
  std::error_code error;
  for (const std::filesystem::directory_entry& entry :
       std::filesystem::directory_iterator("/proc", error)) {
    std::ifstream file(entry.path() / "cmdline", std::ios::binary);
    std::string line{std::istreambuf_iterator<char>(file), {}};
    if (line.find(text) != std::string::npos) found.push_back(line);
  }
  return found;
}

class CommandJob : public JobFixture {
 protected:
  CommandJob() : record_(scheduler_.addRecordingQueue("queue")) {}

  // Submits the text as a command file and waits; gives the job's state.
  std::string print(std::string_view text) {
    submitText("queue", text);
    return wait();
  }
  std::string printCommands(std::string_view lines) {
    submit("queue", lines);
    return wait();
  }

  std::filesystem::path record_;
};

TEST_F(CommandJob, ShowsTheExecutorsAnswerInTheLog) {
  product_.addPlugIn("Echo", {"Echo"});
  EXPECT_EQ(printCommands("Echo\n"), "completed");
  EXPECT_THAT(log(), Contains("echo answers: Echo"));
}

TEST_F(CommandJob, EndsWithoutAByteForADeviceThatNobodyKnows) {
  product_.removeDeviceModel();
  product_.addPlugIn("Echo", {"Echo"});
  EXPECT_EQ(printCommands("Echo\n"), "completed");
  EXPECT_EQ(readFile(record_), "");
}

TEST_F(CommandJob, ReadsStandardInputBehindAnotherFilter) {
  product_.addPlugIn("Echo", {"Echo"});
  const std::filesystem::path commandFile = folder_.path() / "commands";
  writeFile(commandFile, std::string(kHeader) + "Echo\n");
  job_ = scheduler_.submitCompressed("queue", commandFile);
  EXPECT_EQ(scheduler_.wait(job_), "completed");
  EXPECT_THAT(log(), Contains("echo answers: Echo"));
  // The scheduler's own words: it put the other filter in front.
  EXPECT_THAT(log(), Contains(HasSubstr("gziptoany")));
}

TEST_F(CommandJob, RunsTwoCommandsOfTwoPlugIns) {
  product_.addPlugIn("Echo", {"Echo"});
  product_.addPlugIn("Second", {"Second"});
  EXPECT_EQ(printCommands("Second\nEcho\n"), "completed");
  const std::vector<std::string> lines = log();
  const auto second = std::ranges::find_if(
      lines, [](const std::string& line) { return line.find("Second") != std::string::npos; });
  const auto echo = std::ranges::find(lines, "echo answers: Echo");
  ASSERT_NE(second, lines.end());
  ASSERT_NE(echo, lines.end());
  EXPECT_LT(second, echo);
}

TEST_F(CommandJob, PassesOverAnUnknownCommand) {
  product_.addPlugIn("Echo", {"Echo"});
  EXPECT_EQ(printCommands("Make coffee\nEcho\n"), "completed");
  EXPECT_THAT(log(), Contains("echo answers: Echo"));
  EXPECT_THAT(log(), Not(Contains("echo answers: Make coffee")));
}

TEST_F(CommandJob, RunsNothingOfAFileWithoutHeader) {
  product_.addPlugIn("Echo", {"Echo"});
  EXPECT_EQ(print("Echo\nEcho\n"), "completed");
  EXPECT_THAT(log(), Not(Contains(HasSubstr("echo"))));
}

TEST_F(CommandJob, RunsNothingOfAFileThatIsNoUTF8) {
  product_.addPlugIn("Echo", {"Echo"});
  EXPECT_EQ(printCommands("Echo\n\xFF\xFE\n"), "completed");
  EXPECT_THAT(log(), Not(Contains(HasSubstr("echo"))));
}

TEST_F(CommandJob, ReportsAnExecutorWithoutAResult) {
  product_.addPlugIn("Result", {"Result nil"});
  EXPECT_EQ(printCommands("Result nil\n"), "completed");
  EXPECT_THAT(log(), Contains("(null)"));
}

TEST_F(CommandJob, GoesOnAfterAnExecutorThatRefuses) {
  product_.addPlugIn("Refusing", {"Refuse"});
  product_.addPlugIn("Echo", {"Echo"});
  EXPECT_EQ(printCommands("Refuse\nEcho\n"), "completed");
  EXPECT_THAT(log(), Contains("echo answers: Echo"));
}

TEST_F(CommandJob, GoesOnAfterAnExecutorThatThrows) {
  product_.addPlugIn("Throwing", {"Throw platform exception"});
  product_.addPlugIn("Echo", {"Echo"});
  EXPECT_EQ(printCommands("Throw platform exception\nEcho\n"), "completed");
  EXPECT_THAT(log(), Contains(HasSubstr("Throw platform exception failed")));
  EXPECT_THAT(log(), Contains("echo answers: Echo"));
}

TEST_F(CommandJob, StopsWithExitStatusOneForAnotherContentType) {
  // This PPD sends plain text through the filter, too, which must not take it for commands.
  product_.addPlugIn("Echo", {"Echo"});
  std::string ppd = readFile(PrivateScheduler::ppd());
  const std::string_view type = "application/vnd.cups-command 0";
  ppd.replace(ppd.find(type), type.size(), "text/plain 0");
  writeFile(folder_.path() / "text.ppd", ppd);
  static_cast<void>(scheduler_.addRecordingQueue("text", folder_.path() / "text.ppd"));
  writeFile(folder_.path() / "text", std::string(kHeader) + "Echo\n");
  job_ = scheduler_.submit("text", folder_.path() / "text", {"-o", "document-format=text/plain"});
  EXPECT_EQ(scheduler_.wait(job_), "processing-stopped");
  EXPECT_THAT(log(), Contains(HasSubstr("stopped with status 1")));
  EXPECT_THAT(log(), Not(Contains(HasSubstr("echo"))));
}

TEST(CommandJobs, LeaveNothingBehind) {
  std::filesystem::path root;
  {
    const TemporaryFolder folder;
    const InstalledProduct product(folder.path() / "prefix");
    const PrivateScheduler scheduler;
    root = scheduler.root();
    scheduler.addFilter(product.filter());
    static_cast<void>(scheduler.addRecordingQueue("queue"));
    writeFile(folder.path() / "commands", std::string(kHeader) + "Echo\n");
    EXPECT_EQ(scheduler.wait(scheduler.submit("queue", folder.path() / "commands")), "completed");
  }
  EXPECT_FALSE(std::filesystem::exists(root));
  EXPECT_THAT(processesNaming(root.string()), IsEmpty());
}

}  // namespace
}  // namespace commandfilter::testing
