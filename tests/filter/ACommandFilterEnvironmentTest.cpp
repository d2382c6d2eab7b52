#include "filter/environment/ACommandFilterEnvironment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "InChild.h"
#include "JobVariables.h"

namespace commandfilter {
namespace {

using testing::JobVariables;
using testing::kSixArguments;
using testing::recordArguments;
using testing::runInChild;

class Environment : public ::testing::Test {
 protected:
  void SetUp() override { recordArguments(kSixArguments); }

  JobVariables variables_;
};

TEST_F(Environment, HoldsTheURIAndTheQueue) {
  const auto environment = ACommandFilterEnvironment::init();
  ASSERT_TRUE(environment);
  EXPECT_EQ(environment->printerURI()->view(), testing::kDeviceURI);
  EXPECT_EQ(environment->queueName()->view(), testing::kQueueName);
}

TEST_F(Environment, IsNilWithoutAVariable) {
  for (const char* name : {"DEVICE_URI", "PRINTER", "CONTENT_TYPE"}) {
    const JobVariables all;
    unsetenv(name);
    EXPECT_EQ(ACommandFilterEnvironment::init(), nullptr) << name;
  }
}

TEST_F(Environment, TakesEmptyValuesOfTheURIAndTheQueue) {
  setenv("DEVICE_URI", "", 1);
  setenv("PRINTER", "", 1);
  const auto environment = ACommandFilterEnvironment::init();
  ASSERT_TRUE(environment);
  EXPECT_TRUE(environment->printerURI()->isEmpty());
  EXPECT_TRUE(environment->queueName()->isEmpty());
}

TEST_F(Environment, IsNilUnlessTheContentTypeIsExact) {
  for (const char* type :
       {"", "application/vnd.cups-command ", " application/vnd.cups-command",
        "Application/vnd.cups-command", "APPLICATION/VND.CUPS-COMMAND",
        "application/vnd.cups-comman", "application/vnd.cups-commands",
        "application/vnd.cups-command;charset=utf-8", "application/vnd.cups-raster"}) {
    setenv("CONTENT_TYPE", type, 1);
    EXPECT_EQ(ACommandFilterEnvironment::init(), nullptr) << '"' << type << '"';
  }
}

TEST_F(Environment, HasNoPathWithSixArgumentsOrFewer) {
  for (std::size_t count = 0; count <= kSixArguments.size(); ++count) {
    recordArguments({kSixArguments.begin(), kSixArguments.begin() + static_cast<int>(count)});
    const auto environment = ACommandFilterEnvironment::init();
    ASSERT_TRUE(environment);
    EXPECT_FALSE(environment->commandFilePath().has_value()) << count;
  }
}

TEST_F(Environment, TakesTheSeventhArgumentForThePathWithoutExaminingIt) {
  for (const std::string path : {"/no/such/file", "", "relative", "\xFF"}) {
    std::vector<std::string> arguments = kSixArguments;
    arguments.push_back(path);
    arguments.emplace_back("an eighth");
    recordArguments(arguments);
    const auto environment = ACommandFilterEnvironment::init();
    ASSERT_TRUE(environment);
    EXPECT_EQ(environment->commandFilePath(), path);
  }
}

TEST_F(Environment, IsSharedOnceItIsMade) {
  runInChild([] {
    ACommandFilterEnvironment* first = ACommandFilterEnvironment::environment();
    ASSERT_NE(first, nullptr);
    setenv("PRINTER", "Another", 1);
    unsetenv("CONTENT_TYPE");
    EXPECT_EQ(ACommandFilterEnvironment::environment(), first);
    EXPECT_EQ(first->queueName()->view(), testing::kQueueName);
  });
}

TEST_F(Environment, IsTriedAgainAfterAFailure) {
  runInChild([] {
    unsetenv("CONTENT_TYPE");
    EXPECT_EQ(ACommandFilterEnvironment::environment(), nullptr);
    EXPECT_EQ(ACommandFilterEnvironment::environment(), nullptr);
    setenv("CONTENT_TYPE", testing::kContentType, 1);
    EXPECT_NE(ACommandFilterEnvironment::environment(), nullptr);
  });
}

TEST_F(Environment, GivesANewObjectOnEveryInit) {
  const auto first = ACommandFilterEnvironment::init();
  const auto second = ACommandFilterEnvironment::init();
  EXPECT_NE(first.get(), second.get());
}

}  // namespace
}  // namespace commandfilter
