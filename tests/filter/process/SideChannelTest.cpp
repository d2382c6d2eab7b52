#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/types.h>

#include <csignal>
#include <filesystem>
#include <future>
#include <string>
#include <utility>

#include "filter/DummyJobs.h"
#include "process/FilterApplication.h"
#include "support/BackendDouble.h"
#include "support/File.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::BackendDouble;
using testing::FilterApplication;
using testing::Job;
using testing::kGetDeviceID;
using testing::kOK;
using testing::kPacket;
using testing::kZeros;
using testing::Outcome;

const std::string kRequest(1, kGetDeviceID);

// Jobs whose framework asks the filter's own device.
class SideChannelJob : public ::testing::Test {
 protected:
  SideChannelJob() {
    application_.addPlugIn("LiveDevice");
    job_.environment["DEVICE_URI"] = "riousbprint://Acme/M1";
  }

  Outcome run(BackendDouble::Answer answer) {
    BackendDouble backend(std::move(answer), SOCK_STREAM);
    job_.sideChannel = backend.filterEnd();
    Outcome outcome = application_.run(job_);
    requests_ = backend.finish();
    EXPECT_EQ(outcome.errors, "the framework is loaded\n");
    return outcome;
  }
  Outcome runWithDeviceID(const std::string& identifier) {
    return run([&](BackendDouble& self, int) { self.send(kGetDeviceID, kOK, identifier); });
  }
  void setSystemVersion(const std::string& version) const {
    const fs::path resources = application_.contents() / "Resources";
    fs::create_directories(resources);
    testing::writeFile(resources / "SystemVersion.plist",
                       "<plist version=\"1.0\"><dict><key>ProductVersion</key><string>" + version +
                           "</string></dict></plist>");
  }

  FilterApplication application_;
  Job job_{"#CUPS-COMMAND\nLoad the framework\n"};
  std::string requests_;
};

TEST_F(SideChannelJob, EndsWithThePacketForAPrinterThatSpeaksLDL) {
  const Outcome outcome = runWithDeviceID("MFG:Acme;MDL:B\xFCro;CMD:PCL,LDL;");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kPacket);
  EXPECT_EQ(requests_, kRequest);
}

TEST_F(SideChannelJob, EndsWithZerosForAPrinterThatDoesNot) {
  const Outcome outcome = runWithDeviceID("MFG:Acme;MDL:M1;CMD:PCL;");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kZeros);
  EXPECT_EQ(requests_, kRequest);
}

TEST_F(SideChannelJob, TakesALongDeviceIDInASecondRequest) {
  const Outcome outcome = runWithDeviceID("DES:" + std::string(3000, 'x') + ";CMD:LDL;");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kPacket);
  EXPECT_EQ(requests_, kRequest + kRequest);
}

TEST_F(SideChannelJob, EndsWithNothingWhenTheBackendHasNoDeviceID) {
  for (const int status : {0, 1, 2, 4, 7, 99}) {
    const Outcome outcome =
        run([status](BackendDouble& self, int) { self.send(kGetDeviceID, status); });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(requests_, kRequest) << status;
  }
}

TEST_F(SideChannelJob, EndsWithNothingWhenTheBackendDies) {
  const Outcome outcome = run([](BackendDouble& self, int) { self.die(); });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
}

TEST_F(SideChannelJob, EndsWithNothingWithoutASideChannel) {
  for (const bool closed : {false, true}) {
    if (closed) job_.closed = {4};
    const Outcome outcome = application_.run(job_);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
  }
}

TEST_F(SideChannelJob, EndsAtOnceWhenItIsCancelledWhileItWaits) {
  std::promise<pid_t> started;
  std::future<pid_t> process = started.get_future();
  job_.started = [&](pid_t child) { started.set_value(child); };
  const Outcome outcome = run([&](BackendDouble&, int before) {
    // Silent, as a printer is that sleeps; the user loses patience.
    if (before == 0) kill(process.get(), SIGTERM);
  });
  EXPECT_EQ(outcome.signal, SIGTERM);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(requests_, kRequest);
}

TEST_F(SideChannelJob, AsksABluetoothPrinterOnlyUnderANewSystem) {
  job_.environment["DEVICE_URI"] = "bluetooth://00-11-22-33-44-55/M1";
  EXPECT_EQ(runWithDeviceID("CMD:LDL;").output, "");
  EXPECT_EQ(requests_, "");
  setSystemVersion("10.6.2");
  EXPECT_EQ(runWithDeviceID("CMD:LDL;").output, "");
  EXPECT_EQ(requests_, "");
  setSystemVersion("10.6.3");
  EXPECT_EQ(runWithDeviceID("CMD:LDL;").output, kPacket);
  EXPECT_EQ(requests_, kRequest);
}

}  // namespace
}  // namespace commandfilter
