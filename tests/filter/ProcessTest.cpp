#include "filter/Process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <vector>

#include "InChild.h"

namespace commandfilter {
namespace {

using testing::runInChild;

constexpr int kLastReserved = 4;

int numberOfANewFile() {
  const int descriptor = open("/dev/null", O_RDWR | O_CLOEXEC);
  close(descriptor);
  return descriptor;
}

TEST(ReserveDescriptors, KeepsNewFilesAwayFromTheNumbersOfTheScheduler) {
  for (const std::vector<int>& missing :
       {std::vector<int>{3, 4}, {3}, {4}, {0}, {0, 1, 2, 3, 4}, {0, 4}, {}}) {
    runInChild([&missing] {
      for (int descriptor = 0; descriptor <= kLastReserved; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) == -1) dup2(STDERR_FILENO, descriptor);
      }
      const int saved = dup(STDOUT_FILENO);
      const int savedError = dup(STDERR_FILENO);
      for (const int descriptor : missing) close(descriptor);
      reserveDescriptors();
      const int next = numberOfANewFile();
      dup2(saved, STDOUT_FILENO);
      dup2(savedError, STDERR_FILENO);
      EXPECT_GT(next, kLastReserved);
      EXPECT_NE(next, -1);
    });
  }
}

TEST(ReserveDescriptors, TakesNoFurtherNumber) {
  runInChild([] {
    for (int descriptor = 0; descriptor <= kLastReserved; ++descriptor) {
      if (fcntl(descriptor, F_GETFD) == -1) dup2(STDERR_FILENO, descriptor);
    }
    const int next = numberOfANewFile();
    reserveDescriptors();
    EXPECT_EQ(numberOfANewFile(), next);
  });
}

TEST(ReserveDescriptors, GivesNumbersThatNobodyCanReadOrWrite) {
  runInChild([] {
    close(STDIN_FILENO);
    close(3);
    reserveDescriptors();
    char byte = 0;
    for (const int descriptor : {STDIN_FILENO, 3}) {
      EXPECT_NE(fcntl(descriptor, F_GETFD), -1);
      EXPECT_EQ(read(descriptor, &byte, 1), -1);
      EXPECT_EQ(errno, EBADF);
      EXPECT_EQ(write(descriptor, &byte, 1), -1);
      EXPECT_EQ(errno, EBADF);
    }
  });
}

TEST(ReserveDescriptors, HandsThemToNoOtherProgram) {
  runInChild([] {
    close(3);
    reserveDescriptors();
    EXPECT_EQ(fcntl(3, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
  });
}

TEST(ReserveDescriptors, LeavesOpenOnesAlone) {
  runInChild([] {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    // Out of the way of the numbers that matter here.
    constexpr int kHigh = 10;
    const int reader = fcntl(ends[0], F_DUPFD_CLOEXEC, kHigh);
    const int writer = fcntl(ends[1], F_DUPFD_CLOEXEC, kHigh);
    dup2(writer, 3);
    reserveDescriptors();
    EXPECT_EQ(write(3, "x", 1), 1);
    char byte = 0;
    EXPECT_EQ(read(reader, &byte, 1), 1);
    EXPECT_EQ(byte, 'x');
  });
}

TEST(IgnoreBrokenPipes, LetsAWriteFailInstead) {
  runInChild([] {
    std::signal(SIGPIPE, SIG_DFL);
    ignoreBrokenPipes();
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    close(ends[0]);
    EXPECT_EQ(write(ends[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
  });
}

}  // namespace
}  // namespace commandfilter
