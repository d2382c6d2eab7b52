// The libraries that a job loads: most of its time goes into loading.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "process/FilterApplication.h"

namespace commandfilter {
namespace {

using testing::FilterApplication;
using ::testing::HasSubstr;
using testing::Job;
using ::testing::Not;

// What the loader says while a job with the command runs.
std::string loaderReport(const std::string& command) {
  FilterApplication application;
  application.addPlugIn("Echo");
  Job job("#CUPS-COMMAND\n" + command + "\n");
  job.environment["LD_DEBUG"] = "libs";
  return application.run(job).errors;
}

TEST(LoadedLibraries, AreTheFewThatAJobNeeds) {
  const std::string report = loaderReport("Echo");
  EXPECT_THAT(report, HasSubstr("echo answers: Echo"));
  for (const char* name : {"libcups", "libuv", "libicu", "libexpat", "libplist"}) {
    EXPECT_THAT(report, Not(HasSubstr(name)));
  }
}

TEST(LoadedLibraries, IncludeICUForATextThatIsNotASCII) {
  EXPECT_THAT(loaderReport("\xC3\x89"
                           "cho"),
              HasSubstr("libicuuc"));
}

}  // namespace
}  // namespace commandfilter
