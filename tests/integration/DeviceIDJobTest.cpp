// Where the device ID of a job comes from.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "InstalledProduct.h"
#include "PrivateScheduler.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

const std::string kPacket("\x24\x00\x10\x00\x00\x07\x00\x01\x00\x00\x00\xFF\xFF\xFF\xFF\x24", 16);
const std::string kZeros(1024, '\0');

class DeviceIDJob : public ::testing::Test {
 protected:
  DeviceIDJob() { scheduler_.addFilter(product_.filter()); }

  // Prints a job without commands to a backend with this script; what the backend got. The PPD has
  // this device ID, or none.
  std::string print(std::string_view script, std::string_view identifier = {}) {
    const std::string queue = "queue" + std::to_string(++queues_);
    const std::filesystem::path ppd = folder_.path() / (queue + ".ppd");
    writeFile(ppd, ppdWith(identifier));
    const std::filesystem::path record = scheduler_.addRecordingQueue(queue, ppd);
    writeFile(record.string() + ".script", script);
    writeFile(folder_.path() / "commands", "#CUPS-COMMAND\n");
    state_ = scheduler_.wait(scheduler_.submit(queue, folder_.path() / "commands"));
    events_ = readFile(record.string() + ".events");
    return readFile(record);
  }
  static std::string ppdWith(std::string_view identifier) {
    std::string ppd = readFile(PrivateScheduler::ppd());
    const std::string_view key = "*1284DeviceID: ";
    const std::size_t start = ppd.find(key);
    const std::size_t end = ppd.find('\n', start) + 1;
    std::string line;
    if (!identifier.empty()) line.append(key).append("\"").append(identifier).append("\"\n");
    return ppd.replace(start, end - start, line);
  }
  [[nodiscard]] std::size_t requests() const {
    std::size_t count = 0;
    for (std::size_t at = events_.find("request "); at != std::string::npos;
         at = events_.find("request ", at + 1)) {
      ++count;
    }
    return count;
  }

  TemporaryFolder folder_;
  InstalledProduct product_{folder_.path() / "prefix"};
  PrivateScheduler scheduler_;
  int queues_ = 0;
  std::string state_;
  std::string events_;
};

TEST_F(DeviceIDJob, EndsWithThePacketForAPrinterThatSpeaksLDL) {
  EXPECT_EQ(print("GET_DEVICE_ID OK MFG:Acme;COMMAND SET:PCL, LDL\n", "MFG:PPD;CMD:PS;"), kPacket);
  EXPECT_EQ(state_, "completed");
  EXPECT_EQ(requests(), 1U) << events_;
}

TEST_F(DeviceIDJob, EndsWithZerosForAnother) {
  EXPECT_EQ(print("GET_DEVICE_ID OK MFG:Acme;CMD:PCL;\n", "CMD:LDL;"), kZeros);
  EXPECT_EQ(requests(), 1U) << events_;
}

TEST_F(DeviceIDJob, TakesTheDeviceIDOfThePPDWhenTheBackendHasNone) {
  for (const char* script : {"", "GET_DEVICE_ID IO_ERROR\n", "GET_DEVICE_ID OK\n",
                             "GET_DEVICE_ID TOO_BIG\n", "GET_DEVICE_ID 99 CMD:PCL;\n"}) {
    EXPECT_EQ(print(script, "CMD:LDL;"), kPacket) << script;
    EXPECT_EQ(state_, "completed");
    EXPECT_EQ(requests(), 1U) << events_;
  }
}

TEST_F(DeviceIDJob, ReadsALongDeviceIDInOneGo) {
  EXPECT_EQ(print("GET_DEVICE_ID size=5000 OK CMD:LDL;DES:\n"), kPacket);
  EXPECT_EQ(requests(), 1U) << events_;
}

TEST_F(DeviceIDJob, EndsWithoutAByteForADeviceThatNobodyKnows) {
  EXPECT_EQ(print(""), "");
  EXPECT_EQ(state_, "completed");
}

TEST_F(DeviceIDJob, OutlivesABackendThatDies) {
  EXPECT_EQ(print("GET_DEVICE_ID exit 0\n"), "");
  EXPECT_EQ(state_, "completed");
}

}  // namespace
}  // namespace commandfilter::testing
