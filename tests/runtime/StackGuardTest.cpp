#include "runtime/StackGuard.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "TestValues.h"
#include "support/ChildProcess.h"

namespace commandfilter {
namespace {

using testing::reasonOf;
using testing::runOnStackOf;

constexpr std::size_t kKilobyte = 1024;
constexpr std::size_t kMegabyte = 1024 * kKilobyte;

// Goes down so many steps, each of at least a kilobyte, unless the guard stops it.
std::size_t descendTo(std::size_t depth) {
  std::array<volatile char, kKilobyte> room{};
  room[depth % kKilobyte] = 1;
  StackGuard::check();
  if (depth == 0) return 0;
  return descendTo(depth - 1) + static_cast<std::size_t>(room[depth % kKilobyte]);
}

// Deeper than any stack here has room for.
std::string reasonOfDescent() {
  return reasonOf([] { static_cast<void>(descendTo(1'000'000)); });
}

TEST(StackGuard, LetsShallowCallsPass) {
  EXPECT_EQ(reasonOf([] { StackGuard::check(); }), "");
}

TEST(StackGuard, RaisesBeforeTheMainStackIsUsedUp) {
  EXPECT_EQ(reasonOfDescent(), "nested too deeply");
  EXPECT_EQ(reasonOf([] { StackGuard::check(); }), "");
}

TEST(StackGuard, RaisesBeforeTheStackOfAThreadIsUsedUp) {
  for (const std::size_t size : {64 * kKilobyte, 256 * kKilobyte, kMegabyte, 32 * kMegabyte}) {
    std::string shallow = "not run";
    std::string deep;
    runOnStackOf(size, [&] {
      shallow = reasonOf([] { StackGuard::check(); });
      deep = reasonOfDescent();
    });
    EXPECT_EQ(shallow, "") << size;
    EXPECT_EQ(deep, "nested too deeply") << size;
  }
}

TEST(StackGuard, LetsALargeStackBeUsed) {
  std::string reason = "not run";
  runOnStackOf(32 * kMegabyte,
               [&reason] { reason = reasonOf([] { static_cast<void>(descendTo(1000)); }); });
  EXPECT_EQ(reason, "");
}

// Descends in a process of its own that is started with the limit and the environment, since a
// stack is what it was when its program was started.
testing::ChildResult descendInProcess(rlim_t stack, std::vector<std::string> environment) {
  rlimit before{};
  getrlimit(RLIMIT_STACK, &before);
  const rlimit limit{std::min(stack, before.rlim_max), before.rlim_max};
  setrlimit(RLIMIT_STACK, &limit);
  testing::ChildOptions options;
  options.program = "/proc/self/exe";
  options.arguments = {"runtime_tests",
                       "--gtest_filter=StackGuard.RaisesBeforeTheMainStackIsUsedUp"};
  options.environment = std::move(environment);
  testing::ChildResult result = testing::runChild(options);
  setrlimit(RLIMIT_STACK, &before);
  return result;
}

TEST(StackGuard, FollowsTheLimitOfTheMainStack) {
  for (const rlim_t size : {256 * kKilobyte, kMegabyte, 16 * kMegabyte}) {
    const testing::ChildResult result = descendInProcess(size, {});
    EXPECT_EQ(result.exitStatus, 0) << size << result.output << result.signal;
  }
}

TEST(StackGuard, DoesNotUseUpAnUnlimitedStack) {
  const testing::ChildResult result = descendInProcess(RLIM_INFINITY, {});
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.signal;
}

// Arguments and environment lie on the same stack.
TEST(StackGuard, LeavesRoomForTheEnvironment) {
  const std::vector<std::string> environment(12, "V=" + std::string(100 * kKilobyte, 'x'));
  const testing::ChildResult result = descendInProcess(8 * kMegabyte, environment);
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.signal;
}

}  // namespace
}  // namespace commandfilter
