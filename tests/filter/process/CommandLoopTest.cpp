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
using ::testing::HasSubstr;
using testing::Job;
using testing::kEcho;
using ::testing::Not;
using testing::Outcome;
using ::testing::StartsWith;

class CommandLoop : public ::testing::Test {
 protected:
  void expectErrors(const std::string& commands, const std::string& errors) const {
    const Outcome outcome = application_.runCommands(commands);
    EXPECT_EQ(outcome.status, 0) << commands;
    EXPECT_EQ(outcome.errors, errors) << commands;
    EXPECT_EQ(outcome.output, "") << commands;
  }

  FilterApplication application_;
};

TEST_F(CommandLoop, ReportsTheAnswerOfAnExecutor) {
  application_.addPlugIn("Echo");
  expectErrors("Echo\n", kEcho);
}

TEST_F(CommandLoop, DestroysEachExecutorBeforeTheNextIsMade) {
  application_.addPlugIn("Echo");
  expectErrors("Echo\nEcho again\nEcho\n",
               kEcho + "echo is born\necho answers: Echo again\necho is dead\n" + kEcho);
}

TEST_F(CommandLoop, RunsCommandsInTheOrderOfTheFile) {
  application_.addPlugIn("Echo");
  application_.addPlugIn("Second");
  expectErrors("Second\nEcho\nsecond\n",
               "second answers: Second\n" + kEcho + "second answers: second\n");
}

TEST_F(CommandLoop, HandsTheCommandOverAsItIsWritten) {
  application_.addPlugIn("Echo");
  expectErrors("\t eCHo AGAIN  \n", "echo is born\necho answers: eCHo AGAIN\necho is dead\n");
}

TEST_F(CommandLoop, SkipsACommandThatNobodyKnows) {
  application_.addPlugIn("Echo");
  expectErrors("Unknown\nEcho with an argument\nEcho\nUnknown\n", kEcho);
}

TEST_F(CommandLoop, SkipsACommandWhoseExecutorRefuses) {
  application_.addPlugIn("Refusing");
  application_.addPlugIn("Echo");
  expectErrors("Refuse\nEcho\nRefuse\n", kEcho);
}

TEST_F(CommandLoop, ReportsNilAsThePlatformWritesIt) {
  application_.addPlugIn("Result");
  expectErrors("Result nil\n", "(null)\n");
}

TEST_F(CommandLoop, ReportsTheDescriptionOfAnyResult) {
  application_.addPlugIn("Result");
  expectErrors("Result null object\n", "<null>\n");
  expectErrors("Result number\n", "1.5\n");
  expectErrors("Result with line break\n", "first\nsecond\n");
  expectErrors("Result with conversions\n", "100% %@ %s %n\n");
  expectErrors("Result array\n", "(\n    \"a b\",\n    2\n)\n");
  expectErrors("Result 1 MB\n", std::string(1'000'000, 'x') + "\n");
}

TEST_F(CommandLoop, GoesOnAfterAnExecutorThatThrows) {
  application_.addPlugIn("Throwing");
  application_.addPlugIn("ThrowingInitializer");
  application_.addPlugIn("Echo");
  const auto errorsOf = [this](const std::string& command) {
    const Outcome outcome = application_.runCommands(command + "\nEcho\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, ::testing::EndsWith(kEcho));
    return outcome.errors.substr(0, outcome.errors.size() - kEcho.size());
  };
  EXPECT_EQ(errorsOf("Throw platform exception"),
            "thrower is dead\nDEBUG: Throw platform exception failed: a platform exception\n");
  EXPECT_EQ(errorsOf("Throw standard exception"),
            "thrower is dead\nDEBUG: Throw standard exception failed: a standard one\n");
  EXPECT_EQ(errorsOf("Throw number"), "thrower is dead\nDEBUG: Throw number failed\n");
  EXPECT_EQ(errorsOf("Throw ill-formed reason"), "thrower is dead\n");
  EXPECT_EQ(errorsOf("Throw while initialising"),
            "DEBUG: Throw while initialising failed: no initialisation\n");
}

TEST_F(CommandLoop, SurvivesAResultThatIsNestedTooDeeply) {
  application_.addPlugIn("Result");
  application_.addPlugIn("Echo");
  const Outcome outcome = application_.runCommands("Result nested 200000 deep\nEcho\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, StartsWith("DEBUG: "));
  EXPECT_THAT(outcome.errors, ::testing::EndsWith(kEcho));
}

TEST_F(CommandLoop, HasOneContextForAllCommands) {
  application_.addPlugIn("Service");
  expectErrors("Service Good\nService Refusing\nService Refusing\nService Unfit\nService Missing\n",
               "Good: the same one twice, refused 0 times\n"
               "Refusing: none, refused 1 times\n"
               "Refusing: none, refused 1 times\n"
               "Unfit: none, refused 1 times\n"
               "Missing: none, refused 1 times\n");
}

TEST_F(CommandLoop, FindsServicesOfPlugInsWithRegardToCase) {
  application_.addPlugIn("Service");
  expectErrors("Service good\nService Good\nService good\n",
               "good: none, refused 0 times\n"
               "Good: the same one twice, refused 0 times\n"
               "good: none, refused 0 times\n");
}

TEST_F(CommandLoop, TakesTheFirstPlugInThatDeclaresTheCommand) {
  application_.addPlugIn("Echo");
  application_.addPlugIn("Second");
  expectErrors("ECHO\nSecond\nECHO\n",
               "echo is born\necho answers: ECHO\necho is dead\nsecond answers: Second\n"
               "echo is born\necho answers: ECHO\necho is dead\n");
}

TEST_F(CommandLoop, TakesTheOtherPlugInWhenItComesFirst) {
  application_.addPlugIn("Second");
  application_.addPlugIn("Echo");
  expectErrors("echo\nEcho again\n",
               "second answers: echo\necho is born\necho answers: Echo again\necho is dead\n");
}

TEST_F(CommandLoop, TakesExternalPlugInsBeforeBuiltInOnes) {
  application_.addBuiltInPlugIn("Echo");
  application_.addPlugIn("Second");
  expectErrors("Echo\n", "second answers: Echo\n");
}

TEST_F(CommandLoop, TakesBuiltInPlugIns) {
  application_.addBuiltInPlugIn("Echo");
  expectErrors("Echo\n", kEcho);
}

TEST_F(CommandLoop, LoadsNoFurtherPlugInsThanItNeeds) {
  for (const char* name : {"Echo", "Second", "Result"}) application_.addPlugIn(name);
  Job job("#CUPS-COMMAND\nEcho\nSecond\n");
  job.environment.emplace("REPORT_LOADED_CODE", "yes");
  const Outcome outcome = application_.run(job);
  EXPECT_THAT(outcome.errors, StartsWith("loaded TestEcho, standard output is open\n" + kEcho +
                                         "loaded TestSecond, standard output is open\n"));
  EXPECT_THAT(outcome.errors, Not(HasSubstr("TestResult")));
}

TEST_F(CommandLoop, LoadsNothingWithoutCommands) {
  application_.addPlugIn("Echo");
  Job job("#CUPS-COMMAND\n# Echo\n");
  job.environment.emplace("REPORT_LOADED_CODE", "yes");
  EXPECT_EQ(application_.run(job).errors, "");
}

TEST_F(CommandLoop, UnloadsAPlugInThatIsNoExecutorAtOnce) {
  for (const char* name : {"NotAnExecutor", "OtherVersion", "NoEntryPoint", "Echo"}) {
    application_.addPlugIn(name);
  }
  Job job("#CUPS-COMMAND\nEcho\n");
  job.environment.emplace("REPORT_LOADED_CODE", "yes");
  const Outcome outcome = application_.run(job);
  EXPECT_EQ(outcome.status, 0);
  std::string expected;
  for (const std::string name : {"TestNotAnExecutor", "TestOtherVersion", "TestNoEntryPoint"}) {
    expected.append("loaded " + name + ", standard output is open\n");
    expected.append("unloaded " + name + ", standard output is open\n");
  }
  expected.append("loaded TestEcho, standard output is open\n" + kEcho);
  EXPECT_THAT(outcome.errors, StartsWith(expected));
}

TEST_F(CommandLoop, LoadsEachPlugInOnce) {
  application_.addPlugIn("NotAnExecutor");
  application_.addPlugIn("Echo");
  Job job("#CUPS-COMMAND\nUnknown\nEcho\nAnother\nEcho\n");
  job.environment.emplace("REPORT_LOADED_CODE", "yes");
  EXPECT_EQ(application_.run(job).errors,
            "loaded TestNotAnExecutor, standard output is open\n"
            "unloaded TestNotAnExecutor, standard output is open\n"
            "loaded TestEcho, standard output is open\n" +
                kEcho + kEcho + "unloaded TestEcho, standard output is closed\n");
}

TEST_F(CommandLoop, WorksWithoutAnyPlugIn) { expectErrors("Echo\n", ""); }

TEST_F(CommandLoop, WorksWithoutAPropertyListOfItsOwn) {
  application_.addBuiltInPlugIn("Echo");
  fs::remove(application_.contents() / "Info.plist");
  expectErrors("Echo\n", kEcho);
}

}  // namespace
}  // namespace commandfilter
