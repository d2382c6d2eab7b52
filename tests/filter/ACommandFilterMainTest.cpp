#include "filter/ACommandFilterMain.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "DummyJobs.h"
#include "InChild.h"
#include "JobVariables.h"
#include "doubles/DeviceModelDouble.h"
#include "runtime/ClassRegistry.h"
#include "runtime/LiveObjects.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::DeviceModelDouble;
using testing::JobVariables;
using testing::kDeviceModelDouble;
using testing::kSixArguments;
using testing::kZeros;
using testing::recordArguments;
using testing::runInChild;
using testing::TemporaryFolder;

// Runs the filter in a child, with a device-model framework that is there from the start.
class FilterMain : public ::testing::Test {
 protected:
  FilterMain() { testing::writeFile(root_.path() / "input", ""); }

  void expectRun(
      int status, bool closesOutput, const std::string& output,
      const std::function<void()>& prepare = [] {}) {
    runInChild([&] {
      recordArguments(kSixArguments);
      const auto registration = ClassRegistry::shared().add(kDeviceModelDouble);
      DeviceModelDouble::shared().deviceID = "MFG:Acme;CMD:PCL;";
      redirect(root_.path() / "input", O_RDONLY, STDIN_FILENO);
      prepare();
      const int saved = dup(STDOUT_FILENO);
      redirect(root_.path() / "output", O_WRONLY | O_CREAT, STDOUT_FILENO);
      const int result = ACommandFilterMain();
      const bool closed = fcntl(STDOUT_FILENO, F_GETFD) == -1;
      dup2(saved, STDOUT_FILENO);
      EXPECT_EQ(result, status);
      EXPECT_EQ(closed, closesOutput);
      EXPECT_EQ(testing::readFile(root_.path() / "output"), output);
    });
  }

  TemporaryFolder root_;

 private:
  static void redirect(const fs::path& file, int flags, int descriptor) {
    const int opened = open(file.c_str(), flags | O_CLOEXEC, 0600);
    ASSERT_GE(opened, 0);
    dup2(opened, descriptor);
    close(opened);
  }
};

TEST_F(FilterMain, SendsTheDummyJobForAnEmptyCommandFile) {
  const JobVariables variables;
  expectRun(0, true, kZeros);
}

TEST_F(FilterMain, SendsTheDummyJobWithoutCommands) {
  const JobVariables variables;
  testing::writeFile(root_.path() / "input", "#CUPS-COMMAND\n# nothing\n");
  expectRun(0, true, kZeros);
}

TEST_F(FilterMain, SendsTheDummyJobAfterCommandsThatNobodyKnows) {
  const JobVariables variables;
  testing::writeFile(root_.path() / "input", "#CUPS-COMMAND\nUnknown\n");
  expectRun(0, true, kZeros);
}

TEST_F(FilterMain, SendsTheDummyJobForAPrinterThatSpeaksLDL) {
  const JobVariables variables;
  expectRun(0, true,
            std::string("\x24\x00\x10\x00\x00\x07\x00\x01\x00\x00\x00\xFF\xFF\xFF\xFF\x24", 16),
            [] { DeviceModelDouble::shared().deviceID = "CMD:PCL,LDL;"; });
}

TEST_F(FilterMain, SendsNothingWithoutADeviceID) {
  const JobVariables variables;
  expectRun(0, true, "", [] { DeviceModelDouble::shared().deviceID.reset(); });
}

TEST_F(FilterMain, SucceedsWhenTheFrameworkThrows) {
  const JobVariables variables;
  expectRun(0, true, "", [] { DeviceModelDouble::shared().throwingCall = "deviceID"; });
}

TEST_F(FilterMain, FailsOutsideACommandJobAndTouchesNothing) {
  expectRun(1, false, "", [] { unsetenv("CONTENT_TYPE"); });
}

TEST_F(FilterMain, ReadsNothingOutsideACommandJob) {
  testing::writeFile(root_.path() / "input", "#CUPS-COMMAND\nEcho\n");
  runInChild([this] {
    const int input = open((root_.path() / "input").c_str(), O_RDONLY | O_CLOEXEC);
    dup2(input, STDIN_FILENO);
    EXPECT_EQ(ACommandFilterMain(), 1);
    EXPECT_EQ(lseek(STDIN_FILENO, 0, SEEK_CUR), 0);
  });
}

TEST_F(FilterMain, LeavesOnlyTheEnvironmentBehind) {
  const JobVariables variables;
  testing::writeFile(root_.path() / "input", "#CUPS-COMMAND\nUnknown\n");
  runInChild([this] {
    const int input = open((root_.path() / "input").c_str(), O_RDONLY | O_CLOEXEC);
    dup2(input, STDIN_FILENO);
    recordArguments(kSixArguments);
    auto expected = LiveObjects::byClass();
    const int saved = dup(STDOUT_FILENO);
    EXPECT_EQ(ACommandFilterMain(), 0);
    dup2(saved, STDOUT_FILENO);
    if constexpr (LiveObjects::kCounting) {
      // Its URI and its queue's name.
      ++expected["ACommandFilterEnvironment"];
      expected["String"] += 2;
    }
    EXPECT_EQ(LiveObjects::byClass(), expected);
  });
}

}  // namespace
}  // namespace commandfilter
