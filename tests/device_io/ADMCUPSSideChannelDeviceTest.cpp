#include "device_io/ADMCUPSSideChannelDevice.h"

#include <gmock/gmock.h>

#include <climits>
#include <limits>
#include <string>
#include <vector>

#include "ScriptedSideChannel.h"
#include "runtime/device_model/DeviceModelConstants.h"

namespace commandfilter {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;
using testing::ScriptedAnswer;
using testing::ScriptedSideChannel;
using testing::SideChannelScript;
using ::testing::SizeIs;
using Status = SideChannelStatus;

const std::string kDeviceID = "MFG:Acme;MDL:M1;CMD:PCL,LDL;";

class SideChannelDevice : public ::testing::Test {
 protected:
  Ref<ADMCUPSSideChannelDevice> device() {
    return ADMCUPSSideChannelDevice::deviceFromInfo_sideChannel(
        nullptr, std::make_unique<ScriptedSideChannel>(script_));
  }
  // The device ID that the answers give; "nil" for none.
  std::string identify(std::vector<ScriptedAnswer> answers, double timeout = 10) {
    script_ = {std::move(answers), {}};
    const RefPtr<String> identifier = device()->newRetrievedDeviceIDWithTimeout(timeout);
    return identifier ? identifier->text() : "nil";
  }
  [[nodiscard]] std::vector<std::pair<int, double>> schedule() const { return script_.schedule(); }

  SideChannelScript script_;
};

TEST_F(SideChannelDevice, AsksForTheDeviceIDWithAClearedBuffer) {
  EXPECT_EQ(identify({{Status::OK, kDeviceID}}), kDeviceID);
  EXPECT_THAT(script_.requests, ElementsAre(testing::RecordedRequest{
                                    SideChannelCommand::GetDeviceID, 2047, 20.0, true}));
  EXPECT_EQ(static_cast<int>(SideChannelCommand::GetDeviceID), 4);
}

TEST_F(SideChannelDevice, GivesASilentBackendUpAfterThreeRequests) {
  EXPECT_EQ(identify({}), "nil");
  EXPECT_THAT(schedule(), ElementsAre(Pair(2047, 20.0), Pair(2047, 40.0), Pair(2047, 60.0)));
}

TEST_F(SideChannelDevice, TakesAnAnswerToALaterRequest) {
  EXPECT_EQ(identify({{Status::Timeout}, {Status::Timeout}, {Status::OK, kDeviceID}}), kDeviceID);
  EXPECT_THAT(schedule(), ElementsAre(Pair(2047, 20.0), Pair(2047, 40.0), Pair(2047, 60.0)));
}

TEST_F(SideChannelDevice, DoublesTheBufferForAnAnswerThatIsTooBig) {
  EXPECT_EQ(identify({{Status::TooBig}, {Status::TooBig}, {Status::OK, kDeviceID}}), kDeviceID);
  EXPECT_THAT(schedule(), ElementsAre(Pair(2047, 20.0), Pair(4095, 20.0), Pair(8191, 20.0)));
  for (const auto& request : script_.requests) EXPECT_TRUE(request.cleared);
}

TEST_F(SideChannelDevice, KeepsTheBufferAfterATimeoutAndTheTimeoutAfterABiggerAnswer) {
  EXPECT_EQ(identify({{Status::TooBig}, {Status::Timeout}, {Status::TooBig}, {Status::Timeout}}),
            "nil");
  EXPECT_THAT(schedule(), ElementsAre(Pair(2047, 20.0), Pair(4095, 20.0), Pair(4095, 40.0),
                                      Pair(8191, 40.0), Pair(8191, 60.0)));
}

TEST_F(SideChannelDevice, ReadsAnAnswerThatFillsTheBuffer) {
  const std::string full(2047, 'x');
  EXPECT_EQ(identify({{Status::OK, full}}), full);
}

TEST_F(SideChannelDevice, EndsWhenTheBufferIsLongerThanALengthCanSay) {
  EXPECT_EQ(identify(std::vector<ScriptedAnswer>(64, {Status::TooBig})), "nil");
  ASSERT_THAT(script_.requests, SizeIs(21));
  EXPECT_EQ(script_.requests.back().room, INT_MAX);
}

TEST_F(SideChannelDevice, HasNoDeviceIDInAnEmptyAnswer) {
  EXPECT_EQ(identify({{Status::OK, ""}, {Status::OK, kDeviceID}}), "nil");
  EXPECT_THAT(script_.requests, SizeIs(1));
  EXPECT_EQ(identify({{Status::OK, "x", -2}}), "nil");
}

TEST_F(SideChannelDevice, TakesNoMoreThanTheRoomThatItOffered) {
  const std::string full(2047, 'x');
  EXPECT_EQ(identify({{Status::OK, full, 1}}), full);
  EXPECT_EQ(identify({{Status::OK, full, INT_MAX - 2047}}), full);
}

TEST_F(SideChannelDevice, StopsAtEveryOtherStatus) {
  for (const int status : {0, 2, 4, 5, 7, 99, -1, 255}) {
    EXPECT_EQ(identify({{static_cast<Status>(status), kDeviceID}, {Status::OK, kDeviceID}}), "nil")
        << status;
    EXPECT_THAT(script_.requests, SizeIs(1)) << status;
  }
}

TEST_F(SideChannelDevice, IgnoresTheTimeoutThatItIsGiven) {
  for (const double timeout : {5.0, 0.0, -1.0, 1e9, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(identify({{Status::OK, kDeviceID}}, timeout), kDeviceID);
    EXPECT_THAT(schedule(), ElementsAre(Pair(2047, 20.0))) << timeout;
  }
}

TEST_F(SideChannelDevice, KeepsTheDeviceID) {
  script_.answers = {{Status::OK, kDeviceID}, {Status::OK, "MFG:Other;"}};
  const auto asked = device();
  const RefPtr<String> first = asked->newRetrievedDeviceIDWithTimeout(10);
  const RefPtr<String> second = asked->newRetrievedDeviceIDWithTimeout(10);
  ASSERT_TRUE(first);
  EXPECT_EQ(first.get(), second.get());
  EXPECT_THAT(script_.requests, SizeIs(1));
}

TEST_F(SideChannelDevice, AsksAgainAfterAFailureWithTheWholeSchedule) {
  script_.answers = {{Status::OK, ""}, {Status::Timeout}, {Status::OK, kDeviceID}};
  const auto asked = device();
  EXPECT_FALSE(asked->newRetrievedDeviceIDWithTimeout(10));
  EXPECT_TRUE(asked->newRetrievedDeviceIDWithTimeout(10));
  EXPECT_THAT(schedule(), ElementsAre(Pair(2047, 20.0), Pair(2047, 20.0), Pair(2047, 40.0)));
}

TEST_F(SideChannelDevice, EndsTheDeviceIDAtAZeroByte) {
  EXPECT_EQ(identify({{Status::OK, kDeviceID + std::string("\0\0", 2)}}), kDeviceID);
  EXPECT_EQ(identify({{Status::OK, std::string("\0MFG:Acme;", 10)}}), "");
}

TEST_F(SideChannelDevice, LosesNoCharacterBeyondASCII) {
  EXPECT_EQ(identify({{Status::OK, "MDL:B\xC3\xBCro;"}}), "MDL:B\xC3\xBCro;");
  EXPECT_EQ(identify({{Status::OK, "MDL:B\xFCro;"}}), "MDL:B\xC3\xBCro;");
}

TEST_F(SideChannelDevice, IsReachableWhenItHasADeviceID) {
  script_.answers = {{Status::OK, kDeviceID}};
  const auto asked = device();
  EXPECT_TRUE(asked->isReachable());
  EXPECT_TRUE(asked->newRetrievedDeviceIDWithTimeout(10));
  EXPECT_THAT(schedule(), ElementsAre(Pair(2047, 20.0)));
}

TEST_F(SideChannelDevice, IsNotReachableWithoutADeviceID) {
  EXPECT_FALSE(device()->isReachable());
  EXPECT_THAT(script_.requests, SizeIs(3));
}

}  // namespace
}  // namespace commandfilter
