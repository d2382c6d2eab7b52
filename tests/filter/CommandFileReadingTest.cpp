#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "InChild.h"
#include "JobVariables.h"
#include "filter/ACommandFilterFile.h"
#include "runtime/Cast.h"
#include "runtime/String.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::JobVariables;
using testing::kSixArguments;
using testing::recordArguments;
using testing::runInChild;
using testing::TemporaryFolder;
using testing::writeFile;

std::string firstCommand(ACommandFilterFile& file) {
  const RefPtr<Array> commands = file.commands();
  if (!commands) return "nil";
  if (commands->isEmpty()) return "empty";
  return castTo<String>((*commands)[0])->text();
}

class CommandFileReading : public ::testing::Test {
 protected:
  CommandFileReading() {
    writeFile(onInput_, "#CUPS-COMMAND\nOn standard input\n");
    writeFile(atPath_, "#CUPS-COMMAND\nAt the path\n");
  }

  // Runs the body in the process of a job with standard input, and with this path if there is one.
  void inJob(const std::optional<fs::path>& path, const std::function<void()>& body) {
    runInChild([&] {
      std::vector<std::string> arguments = kSixArguments;
      if (path) arguments.push_back(path->string());
      recordArguments(arguments);
      const int input = open(onInput_.c_str(), O_RDONLY | O_CLOEXEC);
      dup2(input, STDIN_FILENO);
      close(input);
      body();
    });
  }

  JobVariables variables_;
  TemporaryFolder root_;
  fs::path onInput_ = root_.path() / "input";
  fs::path atPath_ = root_.path() / "file";
};

TEST_F(CommandFileReading, TakesStandardInputWithoutAPath) {
  inJob(std::nullopt,
        [] { EXPECT_EQ(firstCommand(*ACommandFilterFile::commandFile()), "On standard input"); });
}

TEST_F(CommandFileReading, TakesThePathWhenThereIsOne) {
  inJob(atPath_,
        [] { EXPECT_EQ(firstCommand(*ACommandFilterFile::commandFile()), "At the path"); });
}

TEST_F(CommandFileReading, DoesNotFallBackOnStandardInput) {
  for (const fs::path& path : {root_.path() / "missing", root_.path(), fs::path()}) {
    inJob(path, [] { EXPECT_EQ(firstCommand(*ACommandFilterFile::commandFile()), "nil"); });
  }
}

TEST_F(CommandFileReading, LeavesStandardInputAloneWhenThereIsAPath) {
  inJob(atPath_, [] {
    static_cast<void>(ACommandFilterFile::commandFile()->commands());
    EXPECT_EQ(lseek(STDIN_FILENO, 0, SEEK_CUR), 0);
  });
}

TEST_F(CommandFileReading, LeavesNoDescriptorOpen) {
  inJob(atPath_, [] {
    const int before = dup(STDERR_FILENO);
    close(before);
    static_cast<void>(ACommandFilterFile::commandFile()->commands());
    const int after = dup(STDERR_FILENO);
    EXPECT_EQ(after, before);
  });
}

TEST_F(CommandFileReading, KeepsItsCommands) {
  inJob(atPath_, [this] {
    const Ref<ACommandFilterFile> file = ACommandFilterFile::commandFile();
    const RefPtr<Array> commands = file->commands();
    ASSERT_TRUE(commands);
    writeFile(atPath_, "#CUPS-COMMAND\nAnother\n");
    EXPECT_EQ(file->commands().get(), commands.get());
    EXPECT_EQ(firstCommand(*file), "At the path");
  });
}

TEST_F(CommandFileReading, KeepsAnEmptyList) {
  writeFile(atPath_, "#CUPS-COMMAND\n");
  inJob(atPath_, [this] {
    const Ref<ACommandFilterFile> file = ACommandFilterFile::commandFile();
    EXPECT_EQ(firstCommand(*file), "empty");
    writeFile(atPath_, "#CUPS-COMMAND\nAnother\n");
    EXPECT_EQ(firstCommand(*file), "empty");
  });
}

TEST_F(CommandFileReading, DoesNotKeepAFailure) {
  writeFile(atPath_, "no header\n");
  inJob(atPath_, [this] {
    const Ref<ACommandFilterFile> file = ACommandFilterFile::commandFile();
    EXPECT_EQ(firstCommand(*file), "nil");
    writeFile(atPath_, "#CUPS-COMMAND\nAnother\n");
    EXPECT_EQ(firstCommand(*file), "Another");
  });
}

TEST_F(CommandFileReading, IsDoneByANewObjectOnEveryCall) {
  inJob(atPath_, [this] {
    const Ref<ACommandFilterFile> first = ACommandFilterFile::commandFile();
    EXPECT_EQ(firstCommand(*first), "At the path");
    writeFile(atPath_, "#CUPS-COMMAND\nAnother\n");
    const Ref<ACommandFilterFile> second = ACommandFilterFile::commandFile();
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(firstCommand(*second), "Another");
  });
}

}  // namespace
}  // namespace commandfilter
