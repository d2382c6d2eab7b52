#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "TestBundles.h"
#include "process/Echo.h"
#include "process/FilterApplication.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::FilterApplication;
using testing::Job;
using testing::kEcho;
using testing::Outcome;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kSanitized = false;
#endif

constexpr std::size_t kHundredMegabytes = 100'000'000;
constexpr std::size_t kTenMegabytes = 10'000'000;
const std::string kHeader = "#CUPS-COMMAND\n";

std::string repeated(const std::string& text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) result.append(text);
  return result;
}

class LargeJob : public ::testing::Test {
 protected:
  void expectErrors(const Job& job, const std::string& errors) const {
    const Outcome outcome = application_.run(job);
    EXPECT_EQ(outcome.status, 0);
    // Not EXPECT_EQ, which would compare and print megabytes line by line.
    EXPECT_TRUE(outcome.errors == errors) << outcome.errors.substr(0, 200);
  }

  FilterApplication application_;
};

TEST_F(LargeJob, Has100MegabytesOfCommands) {
  application_.addPlugIn("Echo");
  const std::string line = std::string(9'999, 'u') + '\n';
  expectErrors(Job(kHeader + repeated(line, kHundredMegabytes / line.size()) + "Echo\n"), kEcho);
}

TEST_F(LargeJob, HasTenMegabytesOnStandardInput) {
  application_.addPlugIn("Echo");
  const std::string line = '#' + std::string(9'998, ' ') + '\n';
  Job job(kHeader + repeated(line, kTenMegabytes / line.size()) + "Echo\n");
  job.onInput = true;
  expectErrors(job, kEcho);
}

TEST_F(LargeJob, HasOneLineOf100Megabytes) {
  application_.addPlugIn("Echo");
  expectErrors(Job(kHeader + std::string(kHundredMegabytes, 'L') + "\nEcho\n"), kEcho);
}

TEST_F(LargeJob, EndsWithALineOfTenMegabytes) {
  application_.addPlugIn("Echo");
  expectErrors(Job(kHeader + "Echo\n" + std::string(kTenMegabytes, 'L')), kEcho);
}

TEST_F(LargeJob, Has100MegabytesWithoutALineBreak) {
  application_.addPlugIn("Echo");
  expectErrors(Job("#CUPS-COMMAND" + std::string(kHundredMegabytes, ' ') + "Echo"), "");
}

TEST_F(LargeJob, HasMegabytesOfNUL) {
  application_.addPlugIn("Echo");
  const std::string zeros(kTenMegabytes, '\0');
  expectErrors(Job(kHeader + zeros + "\nEcho\n"), kEcho);
  expectErrors(Job(zeros), "");
}

TEST_F(LargeJob, HasMillionsOfEmptyLines) {
  application_.addPlugIn("Echo");
  for (const std::string separator : {"\n", "\r\n", "\v", "\xC2\x85", "\xE2\x80\xA8"}) {
    expectErrors(Job("#CUPS-COMMAND" + repeated(separator, 1'000'000) + "Echo"), kEcho);
  }
}

TEST_F(LargeJob, HasNoCommandsWhenTheMemoryDoesNotHoldIt) {
  if (kSanitized) GTEST_SKIP() << "the sanitizer needs more address space than any limit leaves";
  application_.addPlugIn("Echo");
  Job job(kHeader + "Echo\n" + std::string(kHundredMegabytes, 'L'));
  const std::string program = application_.program().string();
  job.program = "/bin/sh";
  job.arguments = {
      "sh", "-c",     "ulimit -v 150000 && exec \"$@\"", "sh", program, "1", "user", "title",
      "1",  "options"};
  expectErrors(job, "");
}

TEST_F(LargeJob, KeepsNoExecutorInMemoryAfterItsCommand) {
  if (kSanitized) GTEST_SKIP() << "the sanitizer keeps freed memory for a while";
  constexpr std::size_t kCommands = 100'000;
  application_.addPlugIn("Memory");
  const Outcome unknown = application_.runCommands(repeated("Nobody\n", kCommands));
  const Outcome known = application_.runCommands(repeated("Memory\n", kCommands));
  EXPECT_EQ(unknown.status, 0);
  EXPECT_EQ(known.status, 0);
  EXPECT_TRUE(known.errors == repeated("4000\n", kCommands)) << known.errors.substr(0, 200);
  // Each executor holds 4 KB; together they would take 400 MB.
  constexpr long kGenerous = 50'000;
  EXPECT_LT(known.peakKilobytes, unknown.peakKilobytes + kGenerous);
}

TEST_F(LargeJob, LoadsOneOfAThousandPlugIns) {
  constexpr int kBundles = 1'000;
  application_.addPlugIn("Echo");
  const fs::path others = application_.addFolder();
  // The code is one file, which tells the first time that it is loaded from any of them.
  const fs::path first = testing::addBundle(others, "0.bundle", "Second", {"Second"});
  for (int i = 1; i < kBundles; ++i) {
    fs::create_directory_symlink(first, others / (std::to_string(i) + ".bundle"));
  }
  Job job(kHeader + "Echo\nEcho again\n");
  job.environment.emplace("REPORT_LOADED_CODE", "yes");
  const Outcome one = application_.run(job);
  EXPECT_EQ(one.status, 0);
  EXPECT_THAT(one.errors, ::testing::StartsWith("loaded TestEcho"));
  EXPECT_THAT(one.errors, ::testing::Not(::testing::HasSubstr("loaded Code")));
  job.commandFile = kHeader + "Second\nUnknown\n";
  EXPECT_THAT(application_.run(job).errors, ::testing::HasSubstr("loaded Code"));
}

}  // namespace
}  // namespace commandfilter
