#include "device_io/CupsSideChannel.h"

#include <cups/sidechannel.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "InChild.h"
#include "device_io/ADMCUPSSideChannelDevice.h"
#include "support/BackendDouble.h"

namespace commandfilter {
namespace {

using ::testing::ElementsAre;
using testing::runInChild;
using Status = SideChannelStatus;

constexpr int kGetDeviceID = CUPS_SC_CMD_GET_DEVICE_ID;
constexpr int kGetState = CUPS_SC_CMD_GET_STATE;
constexpr int kOK = CUPS_SC_STATUS_OK;
// In seconds: one that a test waits out, and one that it never does.
constexpr double kShort = 0.02;
constexpr double kLong = 60;

const std::string kAnsweredDeviceID = "MFG:Acme;MDL:M1;CMD:PCL,LDL;";

// A backend on the side channel of this process.
class BackendDouble : public testing::BackendDouble {
 public:
  explicit BackendDouble(Answer answer, int type = SOCK_SEQPACKET)
      : testing::BackendDouble(std::move(answer), type) {
    install();
  }
};

struct Reply {
  Status status;
  int length;
  std::string bytes;
};

Reply request(double timeout = kLong, int room = 2047) {
  std::string buffer(static_cast<std::size_t>(room), '\0');
  int length = room;
  CupsSideChannel channel;
  const Status status =
      channel.doRequest(SideChannelCommand::GetDeviceID, buffer.data(), length, timeout);
  return {status, length, buffer.substr(0, static_cast<std::size_t>(std::max(length, 0)))};
}

// Every test runs in a child, because the side channel is a descriptor of the whole process.

TEST(CupsSideChannel, BringsTheAnswerWithAllItsBytes) {
  runInChild([] {
    const std::string bytes("MFG:\0\xFC\xFF;", 8);
    BackendDouble backend(
        [&](testing::BackendDouble& self, int) { self.send(kGetDeviceID, kOK, bytes); });
    const Reply answer = request();
    EXPECT_EQ(answer.status, Status::OK);
    EXPECT_EQ(answer.bytes, bytes);
    EXPECT_EQ(backend.finish(), std::string(1, kGetDeviceID));
  });
}

TEST(CupsSideChannel, BringsAnEmptyAnswer) {
  runInChild([] {
    BackendDouble backend([](testing::BackendDouble& self, int) { self.send(kGetDeviceID, kOK); });
    const Reply answer = request();
    EXPECT_EQ(answer.status, Status::OK);
    EXPECT_EQ(answer.length, 0);
  });
}

TEST(CupsSideChannel, SaysWhenTheRoomIsTooSmall) {
  runInChild([] {
    BackendDouble backend([](testing::BackendDouble& self, int) {
      self.send(kGetDeviceID, kOK, std::string(5000, 'x'));
    });
    for (const int room : {2047, 4095}) EXPECT_EQ(request(kLong, room).status, Status::TooBig);
    const Reply answer = request(kLong, 8191);
    EXPECT_EQ(answer.status, Status::OK);
    EXPECT_EQ(answer.length, 5000);
  });
}

TEST(CupsSideChannel, PassesEveryStatusOnWithoutALength) {
  runInChild([] {
    for (const int status : {0, 2, 3, 4, 6, 7, 99, -1}) {
      for (const bool late : {false, true}) {
        BackendDouble backend([&](testing::BackendDouble& self, int) {
          if (late) self.send(kGetState, kOK, "x");
          self.send(kGetDeviceID, status, "garbage");
        });
        const Reply answer = request();
        EXPECT_EQ(static_cast<int>(answer.status), status);
        EXPECT_EQ(answer.length, 0) << status;
      }
    }
  });
}

TEST(CupsSideChannel, TimesOutWhenTheBackendIsSilent) {
  runInChild([] {
    BackendDouble backend([](testing::BackendDouble&, int) {});
    EXPECT_EQ(request(kShort).status, Status::Timeout);
  });
}

TEST(CupsSideChannel, TimesOutWithoutABackendAndLives) {
  runInChild([] {
    std::signal(SIGPIPE, SIG_DFL);
    {
      // Only a stream raises the signal.
      BackendDouble backend([](testing::BackendDouble& self, int) { self.die(); }, SOCK_STREAM);
      EXPECT_EQ(request().status, Status::Timeout);
      EXPECT_EQ(request().status, Status::Timeout);
    }
    EXPECT_EQ(request().status, Status::Timeout);
    // What the process wanted of the signal is as it was.
    EXPECT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_DFL);
  });
}

TEST(CupsSideChannel, DropsAnswersThatCameBeforeTheQuestion) {
  runInChild([] {
    BackendDouble backend(
        [](testing::BackendDouble& self, int) { self.send(kGetDeviceID, kOK, kAnsweredDeviceID); });
    backend.send(kGetState, kOK, "x");
    backend.send(kGetDeviceID, kOK, "MFG:Old;");
    backend.sendRaw(std::string("\x04\x01\x7F", 3));
    const Reply answer = request();
    EXPECT_EQ(answer.status, Status::OK);
    EXPECT_EQ(answer.bytes, kAnsweredDeviceID);
  });
}

TEST(CupsSideChannel, ReadsOnPastLateAnswersToOtherCommands) {
  runInChild([] {
    BackendDouble backend([](testing::BackendDouble& self, int) {
      self.send(kGetState, kOK, "x");
      self.send(CUPS_SC_CMD_SNMP_GET, kOK, std::string(3000, 'y'));
      self.send(kGetDeviceID, kOK, kAnsweredDeviceID);
    });
    const Reply answer = request();
    EXPECT_EQ(answer.status, Status::OK);
    EXPECT_EQ(answer.bytes, kAnsweredDeviceID);
    EXPECT_EQ(backend.finish(), std::string(1, kGetDeviceID));
  });
}

TEST(CupsSideChannel, TakesNoLateAnswerForItsOwn) {
  runInChild([] {
    BackendDouble backend(
        [](testing::BackendDouble& self, int) { self.send(kGetState, kOK, kAnsweredDeviceID); });
    const Reply answer = request(kShort);
    EXPECT_EQ(answer.status, Status::BadMessage);
    EXPECT_EQ(answer.length, 0);
  });
}

TEST(CupsSideChannel, WaitsNoLongerForALateAnswerToAnother) {
  runInChild([] {
    constexpr double kTimeout = 0.1;
    const auto pause = [] {
      std::this_thread::sleep_for(std::chrono::duration<double>(kTimeout * 0.6));
    };
    BackendDouble backend([&](testing::BackendDouble& self, int) {
      pause();
      self.send(kGetState, kOK, "x");
      pause();
      self.send(kGetDeviceID, kOK, kAnsweredDeviceID);
    });
    EXPECT_NE(request(kTimeout).status, Status::OK);
  });
}

TEST(CupsSideChannel, SurvivesAnswersThatAreNone) {
  runInChild([] {
    const std::vector<std::string> messages{
        "\x04", std::string("\x04\x01\x00", 3), std::string("\x04\x01\xFF\xFF", 4),
        std::string("\x00\x01\x00\x00", 4), std::string("\xFF\x01\x00\x01x", 5)};
    for (const std::string& message : messages) {
      BackendDouble backend([&](testing::BackendDouble& self, int) { self.sendRaw(message); });
      const Reply answer = request(kShort);
      EXPECT_NE(answer.status, Status::OK);
      EXPECT_EQ(answer.length, 0);
    }
  });
}

TEST(CupsSideChannel, FailsWhenTheDescriptorIsNoSideChannel) {
  runInChild([] {
    close(CUPS_SC_FD);
    EXPECT_EQ(request(kShort).status, Status::Timeout);
  });
}

// CUPS's side channel on a clock that runs a thousand times as fast.
class FastSideChannel final : public SideChannel {
 public:
  explicit FastSideChannel(std::vector<double>& timeouts) : timeouts_(timeouts) {}
  SideChannelStatus doRequest(SideChannelCommand command, char* buffer, int& length,
                              double timeout) override {
    timeouts_.push_back(timeout);
    return channel_.doRequest(command, buffer, length, timeout / 1000);
  }

 private:
  CupsSideChannel channel_;
  std::vector<double>& timeouts_;
};

TEST(CupsSideChannel, GivesADeviceTwentyFortyAndSixtySeconds) {
  runInChild([] {
    BackendDouble backend([](testing::BackendDouble&, int) {});
    std::vector<double> timeouts;
    const auto device = ADMCUPSSideChannelDevice::deviceFromInfo_sideChannel(
        nullptr, std::make_unique<FastSideChannel>(timeouts));
    EXPECT_FALSE(device->isReachable());
    EXPECT_THAT(timeouts, ElementsAre(20.0, 40.0, 60.0));
    EXPECT_EQ(backend.finish(), std::string(3, kGetDeviceID));
  });
}

TEST(CupsSideChannel, GivesADeviceAnAnswerThatComesAfterItsRequestWasGivenUp) {
  runInChild([] {
    BackendDouble backend([](testing::BackendDouble& self, int before) {
      // The first request is answered while the second waits.
      if (before == 1) self.send(kGetDeviceID, kOK, kAnsweredDeviceID);
    });
    std::vector<double> timeouts;
    const auto device = ADMCUPSSideChannelDevice::deviceFromInfo_sideChannel(
        nullptr, std::make_unique<FastSideChannel>(timeouts));
    const RefPtr<String> identifier = device->newRetrievedDeviceIDWithTimeout(10);
    EXPECT_EQ(textOf(identifier.get()), kAnsweredDeviceID);
  });
}

TEST(CupsSideChannel, NeedsOneRoundTripForADeviceThatAnswers) {
  runInChild([] {
    BackendDouble backend(
        [](testing::BackendDouble& self, int) { self.send(kGetDeviceID, kOK, kAnsweredDeviceID); });
    const RefPtr<IDMDevice> device =
        ADMCUPSSideChannelDevice::initFromInfo_withHandler(nullptr, {});
    ASSERT_TRUE(device);
    EXPECT_TRUE(device->isReachable());
    const RefPtr<String> identifier = device->newRetrievedDeviceIDWithTimeout(10);
    EXPECT_EQ(textOf(identifier.get()), kAnsweredDeviceID);
    EXPECT_EQ(backend.finish(), std::string(1, kGetDeviceID));
  });
}

}  // namespace
}  // namespace commandfilter
