#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "process/Echo.h"
#include "process/FilterApplication.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::FilterApplication;
using testing::Job;
using testing::kEcho;
using testing::Outcome;

const std::string kCommandFile = "#CUPS-COMMAND\nEcho\n";

class FilterEntry : public ::testing::Test {
 protected:
  FilterEntry() {
    application_.addPlugIn("Echo");
    job_.commandFile = kCommandFile;
  }

  void expectErrors(const std::string& errors) const {
    const Outcome outcome = application_.run(job_);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, errors);
    EXPECT_EQ(outcome.output, "");
  }
  void expectRefused() const {
    const Outcome outcome = application_.run(job_);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "");
  }

  FilterApplication application_;
  Job job_;
};

TEST_F(FilterEntry, ReadsTheFileThatTheSeventhArgumentNames) { expectErrors(kEcho); }

TEST_F(FilterEntry, ReadsStandardInputWithSixArguments) {
  job_.onInput = true;
  expectErrors(kEcho);
}

TEST_F(FilterEntry, ReadsStandardInputWithFewerArguments) {
  job_.onInput = true;
  job_.arguments.resize(1);
  expectErrors(kEcho);
}

TEST_F(FilterEntry, DoesNotReadTheOtherArguments) {
  job_.arguments = {"", "", "", "", "", ""};
  expectErrors(kEcho);
  job_.arguments = {"\xFF", "%n", "--help", "-1", "not a number", std::string(100'000, 'o')};
  expectErrors(kEcho);
}

TEST_F(FilterEntry, OverlooksArgumentsBehindThePath) {
  job_.onInput = true;
  job_.arguments.emplace_back("/dev/null");
  job_.arguments.emplace_back("an eighth");
  expectErrors("");
}

TEST_F(FilterEntry, RefusesAnotherContentType) {
  for (const char* type : {"", "application/vnd.cups-command ", "Application/vnd.cups-command",
                           "application/vnd.cups-raster"}) {
    job_.environment["CONTENT_TYPE"] = type;
    expectRefused();
  }
}

TEST_F(FilterEntry, RefusesAJobWithoutAVariable) {
  for (const char* name : {"DEVICE_URI", "PRINTER", "CONTENT_TYPE"}) {
    job_ = Job(kCommandFile);
    job_.environment.erase(name);
    expectRefused();
  }
}

TEST_F(FilterEntry, RefusesAJobWithoutAnyVariable) {
  job_.environment.clear();
  expectRefused();
}

TEST_F(FilterEntry, NeedsNoOtherVariable) {
  job_.environment.emplace("PATH", "/nowhere");
  job_.environment.emplace("PPD", "/nowhere");
  job_.environment.emplace("LANG", "no language");
  expectErrors(kEcho);
}

TEST_F(FilterEntry, HasNoCommandsWhenTheFileIsNoCommandFile) {
  for (const std::string& text :
       {std::string(), std::string("\n"), std::string("Echo\n"), std::string("#CUPS-COMMAND"),
        std::string("\n#CUPS-COMMAND\nEcho\n"), std::string("#cups-command\nEcho\n"),
        kCommandFile + "\xFF", "\xFF\xFE" + kCommandFile}) {
    job_.commandFile = text;
    expectErrors("");
  }
}

TEST_F(FilterEntry, TakesAFileWithAMarkOfTheEncoding) {
  job_.commandFile = "\xEF\xBB\xBF" + kCommandFile;
  expectErrors(kEcho);
}

TEST_F(FilterEntry, HasNoCommandsWhenThePathCannotBeRead) {
  for (const std::string& path :
       {std::string(), std::string("/no/such/file"), application_.root().string(),
        std::string("/dev/null"), std::string(100'000, 'p'), std::string("/dev/null/below")}) {
    job_.path = path;
    expectErrors("");
  }
}

TEST_F(FilterEntry, DoesNotCareForItsName) {
  for (const char* name : {"Queue", "", "/no/such/program", "/bin/sh", "commandfilter"}) {
    job_.arguments[0] = name;
    expectErrors(kEcho);
  }
}

TEST_F(FilterEntry, FindsItsBundleThroughASymbolicLink) {
  const fs::path link = application_.root() / "link";
  fs::create_symlink(application_.program(), link);
  const fs::path second = application_.root() / "second";
  fs::create_symlink("link", second);
  for (const fs::path& program : {link, second}) {
    job_.program = program;
    expectErrors(kEcho);
  }
}

TEST_F(FilterEntry, KnowsNoPlugInsOutsideABundle) {
  const fs::path alone = application_.root() / "alone";
  fs::copy_file(application_.program(), alone);
  job_.program = alone;
  expectErrors("");
}

}  // namespace
}  // namespace commandfilter
