#include "device_model/CupsBackendMessages.h"

#include <cups/sidechannel.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <string_view>

#include "InChild.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

using testing::runInChild;

// The other end of this process's side channel.
int makeSideChannel() {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) return -1;
  // A copy far away from the number that is about to be taken.
  const int backend = dup2(ends[1], 50);
  dup2(ends[0], CUPS_SC_FD);
  for (const int end : ends) {
    if (end != CUPS_SC_FD) close(end);
  }
  return backend;
}

void answer(int backend, int command, int status, std::string_view data) {
  std::string bytes{static_cast<char>(command), static_cast<char>(status),
                    static_cast<char>(data.size() >> 8U), static_cast<char>(data.size() & 0xFFU)};
  bytes.append(data);
  ASSERT_EQ(write(backend, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

TEST(CupsBackendMessages, GoToTheBackendAndBack) {
  runInChild([] {
    const int backend = makeSideChannel();
    CupsBackendMessages messages;
    ASSERT_TRUE(messages.send(BackendCommand::SNMPGet, std::string_view(".1.3\0", 5), 1));
    char request[64] = {};
    ASSERT_EQ(read(backend, request, sizeof request), 9);
    EXPECT_EQ(std::string_view(request, 9), std::string_view("\6\0\0\5.1.3\0", 9));
    answer(backend, 6, CUPS_SC_STATUS_OK, std::string_view(".1.3\0x", 6));
    const auto received = messages.receive(10);
    ASSERT_TRUE(received);
    EXPECT_EQ(received->command, 6);
    EXPECT_EQ(received->status, BackendMessages::kOK);
    EXPECT_EQ(received->data, std::string_view(".1.3\0x", 6));
  });
}

TEST(CupsBackendMessages, DropWhatCameTooLate) {
  runInChild([] {
    const int backend = makeSideChannel();
    answer(backend, 4, CUPS_SC_STATUS_OK, "late");
    answer(backend, 4, CUPS_SC_STATUS_OK, "later");
    CupsBackendMessages messages;
    ASSERT_TRUE(messages.send(BackendCommand::GetDeviceID, {}, 1));
    answer(backend, 4, CUPS_SC_STATUS_OK, "in time");
    const auto received = messages.receive(10);
    ASSERT_TRUE(received);
    EXPECT_EQ(received->data, "in time");
  });
}

TEST(CupsBackendMessages, TakeNoDataFromAFailure) {
  runInChild([] {
    const int backend = makeSideChannel();
    CupsBackendMessages messages;
    // Numbers that no status has among them.
    for (const int status : {0, 2, 7, 99, -1}) {
      ASSERT_TRUE(messages.send(BackendCommand::GetDeviceID, {}, 1));
      answer(backend, 4, status, "x");
      const auto received = messages.receive(10);
      ASSERT_TRUE(received);
      EXPECT_EQ(received->status, status);
      EXPECT_EQ(received->data, "");
    }
  });
}

TEST(CupsBackendMessages, EndWhenTheBackendIsGone) {
  runInChild([] {
    // As it is in a process that does not ignore broken pipes.
    std::signal(SIGPIPE, SIG_DFL);
    const int backend = makeSideChannel();
    close(backend);
    CupsBackendMessages messages;
    if (messages.send(BackendCommand::GetDeviceID, {}, 1)) {
      EXPECT_FALSE(messages.receive(10));
    }
  });
}

TEST(CupsBackendMessages, EndAtTheTimeout) {
  runInChild([] {
    makeSideChannel();
    CupsBackendMessages messages;
    ASSERT_TRUE(messages.send(BackendCommand::GetDeviceID, {}, 1));
    EXPECT_FALSE(messages.receive(0.01));
  });
}

TEST(CupsBackendMessages, LeaveADescriptorAloneThatIsNoSideChannel) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.path() / "file";
  testing::writeFile(path, "untouched");
  runInChild([&path] {
    close(CUPS_SC_FD);
    CupsBackendMessages messages;
    EXPECT_FALSE(messages.send(BackendCommand::GetDeviceID, {}, 1));
    FILE* file = fopen(path.c_str(), "r+");
    dup2(fileno(file), CUPS_SC_FD);
    EXPECT_FALSE(messages.send(BackendCommand::GetDeviceID, {}, 1));
  });
  EXPECT_EQ(testing::readFile(path), "untouched");
}

}  // namespace
}  // namespace commandfilter
