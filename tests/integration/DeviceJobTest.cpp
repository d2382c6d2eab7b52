// Command jobs for devices that our own backend plays, under the names of real ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "TestBundles.h"
#include "integration/JobFixture.h"
#include "support/File.h"

namespace commandfilter::testing {
namespace {

using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::string_view kRequest = "request GET_DEVICE_ID";
constexpr std::string_view kSpeaksLDL = "GET_DEVICE_ID OK MFG:Acme;MDL:M1;CMD:PCL,LDL;\n";

class DeviceJob : public JobFixture {
 protected:
  // Adds a queue whose backend is installed for the scheme and answers as the script says. What is
  // to be found in the device's URI is in the queue's name.
  void addDevice(const std::string& scheme, std::string_view script,
                 const std::string& queue = "queue") {
    queue_ = queue;
    record_ = scheduler_.addRecordingQueue(queue, PrivateScheduler::ppd(), scheme);
    writeFile(record_.string() + ".script", script);
  }
  // Submits the commands and waits; gives the job's state.
  std::string print(std::string_view commands = "") {
    submit(queue_, commands);
    return wait();
  }
  // What the last job brought to the backend.
  [[nodiscard]] std::string received() const { return readFile(record_); }
  // The requests that the backend got in the last job.
  [[nodiscard]] std::vector<std::string> requests() const {
    std::istringstream lines(readFile(record_.string() + ".events"));
    std::vector<std::string> found;
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("request")) found.push_back(line);
    }
    return found;
  }

  std::string queue_;
  std::filesystem::path record_;
};

TEST_F(DeviceJob, EndsWithThePacketForAPrinterThatSpeaksLDL) {
  addDevice("riousbprint", kSpeaksLDL);
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kPacket);
  EXPECT_THAT(requests(), ElementsAre(kRequest));
}

TEST_F(DeviceJob, EndsWithZerosForAPrinterThatDoesNot) {
  addDevice("riousbprint", "GET_DEVICE_ID OK MFG:Acme;MDL:M1;CMD:PCL;\n");
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kZeros);
  EXPECT_THAT(requests(), ElementsAre(kRequest));
}

TEST_F(DeviceJob, AsksForTheDeviceIDOnceHoweverOftenItIsWanted) {
  product_.addPlugIn("DeviceReport", {"Report identity"});
  addDevice("riousbprint", kSpeaksLDL);
  EXPECT_EQ(print("Report identity\nReport identity\n"), "completed");
  EXPECT_THAT(log(), Contains("device ID = MFG:Acme;MDL:M1;CMD:PCL,LDL;").Times(2));
  EXPECT_EQ(received(), kPacket);
  EXPECT_THAT(requests(), ElementsAre(kRequest));
}

TEST_F(DeviceJob, ReachesPrintersOfServiceDiscoveryOverTheSideChannel) {
  for (const char* scheme : {"dnssd", "mdns"}) {
    addDevice(scheme, kSpeaksLDL, std::string(scheme) + "._riousbprint");
    EXPECT_EQ(print(), "completed") << scheme;
    EXPECT_EQ(received(), kPacket) << scheme;
    EXPECT_THAT(requests(), ElementsAre(kRequest)) << scheme;
    // No other source speaks for a device that is reached there and does not answer.
    writeFile(record_.string() + ".script", "");
    EXPECT_EQ(print(), "completed") << scheme;
    EXPECT_EQ(received(), "") << scheme;
  }
}

TEST_F(DeviceJob, TakesTheQueuesDeviceIDForOtherServicesWithoutOne) {
  addDevice("dnssd", "", "dnssd._ipp");
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kZeros);
  EXPECT_THAT(requests(), ElementsAre(kRequest));
  writeFile(record_.string() + ".script", kSpeaksLDL);
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kPacket);
  EXPECT_THAT(requests(), ElementsAre(kRequest));
}

TEST_F(DeviceJob, ReachesBluetoothPrintersThereUnderANewSystem) {
  product_.setSystemVersion("10.6.3");
  addDevice("bluetooth", kSpeaksLDL);
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kPacket);
  writeFile(record_.string() + ".script", "");
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), "");
  // Under an older one the framework's own transport does, which knows the queue's device ID.
  product_.setSystemVersion("10.6.2");
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kZeros);
  EXPECT_THAT(requests(), ElementsAre(kRequest));
}

TEST_F(DeviceJob, WaitsForALateAnswer) {
  addDevice("riousbprint", "GET_DEVICE_ID after=0.5 OK CMD:LDL;\n");
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kPacket);
  EXPECT_THAT(requests(), ElementsAre(kRequest));
}

TEST_F(DeviceJob, MakesRoomForALongDeviceID) {
  // Room for 2047 bytes, for 4095, for 8191.
  addDevice("riousbprint", "GET_DEVICE_ID size=5000 OK CMD:LDL;DES:\n");
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kPacket);
  EXPECT_THAT(requests(), ElementsAre(kRequest, kRequest, kRequest));
}

TEST_F(DeviceJob, AsksAgainWhenTheBackendItselfLacksRoom) {
  addDevice("riousbprint", "GET_DEVICE_ID TOO_BIG\nGET_DEVICE_ID OK CMD:LDL;\n");
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), kPacket);
  EXPECT_THAT(requests(), ElementsAre(kRequest, kRequest));
}

TEST_F(DeviceJob, CopesWithABackendThatAlwaysLacksRoom) {
  addDevice("riousbprint", "GET_DEVICE_ID TOO_BIG\n");
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(received(), "");
}

TEST_F(DeviceJob, EndsWithNothingWithoutAFramework) {
  product_.removeDeviceModel();
  product_.addPlugIn("DeviceReport", {"Report identity"});
  addDevice("riousbprint", kSpeaksLDL);
  EXPECT_EQ(print("Report identity\n"), "completed");
  EXPECT_THAT(log(), Contains("no framework"));
  EXPECT_EQ(received(), "");
  EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(DeviceJob, EndsWithNothingForAnAnswerThatIsNoDeviceID) {
  for (const char* answer :
       {"IO_ERROR", "NO_RESPONSE", "NOT_IMPLEMENTED", "NONE CMD:LDL;", "99 CMD:LDL;", "OK"}) {
    addDevice("riousbprint", std::string("GET_DEVICE_ID ").append(answer).append("\n"));
    EXPECT_EQ(print(), "completed") << answer;
    EXPECT_EQ(received(), "") << answer;
    EXPECT_THAT(requests(), ElementsAre(kRequest)) << answer;
  }
}

TEST_F(DeviceJob, ReadsADeviceIDThatIsNotUTF8) {
  product_.addPlugIn("DeviceReport", {"Report identity"});
  addDevice("riousbprint", "GET_DEVICE_ID OK MFG:Acme;MDL:B\\xFCro;CMD:LDL;\\x00rest\n");
  EXPECT_EQ(print("Report identity\n"), "completed");
  EXPECT_THAT(log(), Contains("device ID = MFG:Acme;MDL:Büro;CMD:LDL;"));
  EXPECT_EQ(received(), kPacket);
}

TEST_F(DeviceJob, TakesNoLateAnswerForTheDeviceID) {
  product_.addPlugIn("DeviceReport", {"Report state", "Report identity"});
  // Later than the filter waits for it, and then before the answer to the next request.
  addDevice("riousbprint",
            "SNMP_GET after=11 OK .1.3.6.1.2.1.25.3.5.1.1.1\\x00CMD:LDL;\n"
            "GET_DEVICE_ID after=2 OK MFG:Acme;CMD:PCL;\n");
  EXPECT_EQ(print("Report state\nReport identity\n"), "completed");
  EXPECT_THAT(log(), Contains("state = (null)"));
  // libcups loses an answer that comes together with the late one; then there is no device ID.
  EXPECT_THAT(log(), Contains(AnyOf("device ID = MFG:Acme;CMD:PCL;", "device ID = (null)")));
  EXPECT_THAT(received(), AnyOf(kZeros, ""));
}

TEST_F(DeviceJob, OutlivesABackendThatDies) {
  product_.addPlugIn("Echo", {"Echo"});
  addDevice("riousbprint", "GET_DEVICE_ID kill 9\n");
  print("Echo\n");
  EXPECT_EQ(received(), "");
  EXPECT_THAT(log(), Contains("echo answers: Echo"));
  EXPECT_THAT(log(), Contains(HasSubstr("commandfilter) exited with no errors")));
  EXPECT_THAT(requests(), ElementsAre(kRequest));
}

TEST_F(DeviceJob, EndsAtOnceWhenItIsCancelledWhileTheDeviceIsSilent) {
  addDevice("riousbprint", "GET_DEVICE_ID silence\n");
  submit(queue_);
  const auto asked = [this] {
    return std::filesystem::exists(record_.string() + ".events") && !requests().empty();
  };
  while (!asked()) std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(scheduler_.client({"cancel", queue_ + "-" + std::to_string(job_)}).exitStatus, 0);
  EXPECT_EQ(wait(), "canceled");
  EXPECT_EQ(received(), "");
  // It did not live to ask again.
  EXPECT_THAT(requests(), ElementsAre(kRequest));
}

TEST_F(DeviceJob, EndsWithThePacketForASimulatedDevice) {
  product_.addPlugIn("DeviceReport", {"Report identity"});
  const std::filesystem::path description = folder_.path() / "device.plist";
  writeFile(description, propertyList("<dict><key>DeviceID</key><string>MFG:Acme;CMD:LDL;</string>"
                                      "<key>ModelName</key><string>M1</string></dict>"));
  // The scheme needs a backend, which has nothing to do with the device.
  record_ = std::filesystem::path(scheduler_.variable("RECORDS")) / "simulated";
  const std::filesystem::path backend = folder_.path() / "backend";
  writeFile(backend, "#!/bin/sh\nexec cat >'" + record_.string() + "'\n");
  std::filesystem::permissions(backend, std::filesystem::perms(0755));
  scheduler_.addBackend(backend, "simulated");
  queue_ = "simulated";
  scheduler_.addQueue(queue_, "simulated://" + description.string(), PrivateScheduler::ppd());
  EXPECT_EQ(print("Report identity\n"), "completed");
  EXPECT_THAT(log(), Contains("model = M1"));
  EXPECT_EQ(received(), kPacket);
}

}  // namespace
}  // namespace commandfilter::testing
