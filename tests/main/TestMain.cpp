// Runs the tests of a program; each must end with as many living objects as it began with.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>
#include <string>

#include "runtime/ClassRegistry.h"
#include "runtime/LiveObjects.h"
#include "runtime/ProcessInfo.h"

namespace {

class LiveObjectsListener : public testing::EmptyTestEventListener {
 public:
  void OnTestStart(const testing::TestInfo& /*info*/) override {
    before_ = commandfilter::LiveObjects::byClass();
  }
  void OnTestEnd(const testing::TestInfo& /*info*/) override {
    EXPECT_EQ(commandfilter::LiveObjects::byClass(), before_) << "objects were left over";
  }

 private:
  std::map<std::string, std::size_t> before_;
};

}  // namespace

int main(int argc, char** argv) {
  // What a test makes is to be trusted whatever the developer's habits are.
  constexpr mode_t kOthersWrite = 022;
  umask(kOthersWrite);
  testing::InitGoogleTest(&argc, argv);
  commandfilter::ProcessInfo::recordArguments(std::span(argv, static_cast<std::size_t>(argc)));
  commandfilter::ClassRegistry::shared().add(commandfilter::runtimeClasses()).keep();
  // The listeners own what they are given.
  testing::UnitTest::GetInstance()->listeners().Append(new LiveObjectsListener);  // NOLINT
  return RUN_ALL_TESTS();
}
