#include "device_io/SideChannelBuffer.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <vector>

#include "InChild.h"
#include "ScriptedSideChannel.h"
#include "device_io/ADMCUPSSideChannelDevice.h"

namespace commandfilter {
namespace {

TEST(SideChannelBuffer, IsZeroAndAsLongAsItIsWantedToBe) {
  const SideChannelBuffer buffer(4096);
  ASSERT_TRUE(buffer);
  EXPECT_EQ(buffer.length(), 4096U);
  EXPECT_TRUE(std::all_of(buffer.data(), buffer.data() + 4096, [](char c) { return c == '\0'; }));
}

TEST(SideChannelBuffer, EndsTheRequestWhenThereIsNoMemoryForIt) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the address sanitizer ends a process that runs out of memory";
#endif
  testing::runInChild([] {
    constexpr rlim_t kRoom = rlim_t{1} << 30;
    const rlimit limit{kRoom, kRoom};
    ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
    EXPECT_FALSE(SideChannelBuffer(std::size_t{2} << 30));
    testing::SideChannelScript script;
    script.answers.assign(64, {SideChannelStatus::TooBig});
    const auto device = ADMCUPSSideChannelDevice::deviceFromInfo_sideChannel(
        nullptr, std::make_unique<testing::ScriptedSideChannel>(script));
    EXPECT_FALSE(device->newRetrievedDeviceIDWithTimeout(10));
    ASSERT_GT(script.requests.size(), 1U);
    EXPECT_LT(script.requests.back().room, INT_MAX);
  });
}

}  // namespace
}  // namespace commandfilter
