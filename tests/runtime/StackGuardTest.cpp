#include "runtime/StackGuard.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <string>
#include <vector>

#include "TestValues.h"

namespace commandfilter {
namespace {

using testing::reasonOf;
using testing::runOnStackOf;

constexpr std::size_t kKilobyte = 1024;
constexpr std::size_t kMegabyte = 1024 * kKilobyte;

// Goes down until the guard stops it. Every step takes about a kilobyte.
std::size_t descend(std::size_t depth) {
  volatile char room[kKilobyte];  // NOLINT: to be on the stack
  room[depth % kKilobyte] = 1;
  StackGuard::check();
  return descend(depth + 1) + static_cast<std::size_t>(room[depth % kKilobyte] - 1);
}

std::string reasonOfDescent() {
  return reasonOf([] { static_cast<void>(descend(0)); });
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
  std::size_t levels = 0;
  runOnStackOf(32 * kMegabyte, [&levels] {
    const auto count = [](auto& self, std::size_t& reached) -> void {
      volatile char room[kKilobyte];  // NOLINT: to be on the stack
      room[0] = 0;
      StackGuard::check();
      ++reached;
      self(self, reached);
      room[0] = 1;
    };
    try {
      count(count, levels);
    } catch (const Exception&) {
      return;
    }
  });
  EXPECT_GT(levels, 1000U);
}

// Descends in a process of its own that is started with the limit and the environment, since a
// stack is what it was when its program was started. Gives the exit status, 0 for a guard that
// worked; negative for the signal that ended the process.
int descendInProcess(rlim_t stack, const std::vector<std::string>& environment) {
  const pid_t child = fork();
  if (child == 0) {
    const rlimit limit{stack, RLIM_INFINITY};
    setrlimit(RLIMIT_STACK, &limit);
    std::vector<char*> variables;
    for (const std::string& variable : environment) {
      variables.push_back(const_cast<char*>(variable.c_str()));  // NOLINT: execve takes it so
    }
    variables.push_back(nullptr);
    std::string program = "/proc/self/exe";
    std::string filter = "--gtest_filter=StackGuard.RaisesBeforeTheMainStackIsUsedUp";
    std::vector<char*> arguments{program.data(), filter.data(), nullptr};
    close(STDOUT_FILENO);
    execve(program.c_str(), arguments.data(), variables.data());
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(StackGuard, FollowsTheLimitOfTheMainStack) {
  for (const rlim_t size : {256 * kKilobyte, kMegabyte, 16 * kMegabyte}) {
    EXPECT_EQ(descendInProcess(size, {}), 0) << size;
  }
}

TEST(StackGuard, DoesNotUseUpAnUnlimitedStack) {
  EXPECT_EQ(descendInProcess(RLIM_INFINITY, {}), 0);
}

// Arguments and environment lie on the same stack.
TEST(StackGuard, LeavesRoomForTheEnvironment) {
  const std::vector<std::string> environment(12, "V=" + std::string(100 * kKilobyte, 'x'));
  EXPECT_EQ(descendInProcess(8 * kMegabyte, environment), 0);
}

}  // namespace
}  // namespace commandfilter
