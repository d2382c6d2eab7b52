// The program with the device-model framework in its bundle.
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
using ::testing::HasSubstr;
using testing::Job;
using testing::kGetDeviceID;
using testing::kOK;
using testing::kPacket;
using testing::Outcome;

class DeviceModel : public ::testing::Test {
 protected:
  [[nodiscard]] fs::path framework() const {
    return application_.contents() / "Frameworks" / "VemoDeviceModel.bundle";
  }
  void addFramework() {
    fs::create_directories(framework());
    fs::remove(framework());
    fs::create_directory_symlink(DEVICE_MODEL_BUNDLE, framework());
  }
  // Runs a job for the device of the description, without commands.
  Outcome run(const std::string& entries) {
    const fs::path path = application_.root() / "device.plist";
    testing::writeFile(path, "<plist><dict>" + entries + "</dict></plist>");
    Job job("#CUPS-COMMAND\n");
    job.environment["DEVICE_URI"] = "simulated://" + path.string();
    return application_.run(job);
  }

  FilterApplication application_;
};

TEST_F(DeviceModel, FindsOutWhatTheDeviceSpeaks) {
  addFramework();
  const Outcome packet = run("<key>DeviceID</key><string>MFG:A;CMD:PCL, LDL</string>");
  EXPECT_EQ(packet.status, 0);
  EXPECT_EQ(packet.output, kPacket);
  EXPECT_EQ(packet.errors, "");
  EXPECT_EQ(run("<key>DeviceID</key><string>MFG:A;CMD:PCL;</string>").output,
            std::string(1024, '\0'));
}

TEST_F(DeviceModel, WaitsForTheDevice) {
  addFramework();
  EXPECT_EQ(run("<key>DeviceID</key><string>CMD:LDL</string><key>Resolution</key><dict>"
                "<key>Delay</key><real>0.01</real></dict>")
                .output,
            kPacket);
}

TEST_F(DeviceModel, GivesNothingForADeviceThatCannotBeUsed) {
  addFramework();
  for (const char* entries :
       {"", "<key>DeviceID</key><integer>1</integer>",
        "<key>DeviceID</key><string>CMD:LDL;</string><key>ServiceState</key><integer>2</integer>",
        "<key>DeviceID</key><string>CMD:LDL;</string><key>Resolution</key><dict><key>Outcome</key>"
        "<string>fail</string></dict>"}) {
    const Outcome outcome = run(entries);
    EXPECT_EQ(outcome.status, 0) << entries;
    EXPECT_EQ(outcome.output, "") << entries;
    EXPECT_EQ(outcome.errors, "") << entries;
  }
}

// A device that the framework reaches by itself, with its backend beside the job.
class DeviceWithBackend : public DeviceModel {
 protected:
  DeviceWithBackend() {
    addFramework();
    job_.environment["DEVICE_URI"] = "usb://Acme/M1";
  }
  Outcome runWith(BackendDouble::Answer answer) {
    BackendDouble backend(std::move(answer), SOCK_STREAM);
    job_.sideChannel = backend.filterEnd();
    Outcome outcome = application_.run(job_);
    requests_ = backend.finish();
    EXPECT_EQ(outcome.errors, "");
    return outcome;
  }

  Job job_{"#CUPS-COMMAND\n"};
  std::string requests_;
};
TEST_F(DeviceWithBackend, EndsWithWhatItSpeaksAfterOneRequest) {
  const auto identify = [](const std::string& identifier) {
    return [identifier](BackendDouble& self, int) { self.send(kGetDeviceID, kOK, identifier); };
  };
  EXPECT_EQ(runWith(identify("MFG:A\xFC;CMD:PCL,LDL;")).output, kPacket);
  EXPECT_EQ(requests_, std::string(1, kGetDeviceID));
  EXPECT_EQ(runWith(identify("DES:" + std::string(20'000, 'x') + ";CMD:LDL;")).output, kPacket);
  EXPECT_EQ(requests_, std::string(1, kGetDeviceID));
  EXPECT_EQ(runWith(identify("MFG:A;CMD:PCL;")).output, std::string(1024, '\0'));
}

TEST_F(DeviceWithBackend, EndsWithNothingWhenTheBackendHasNoDeviceID) {
  for (const int status : {0, 1, 2, 3, 4, 5, 6, 7, 99, -1}) {
    const Outcome outcome =
        runWith([status](BackendDouble& self, int) { self.send(kGetDeviceID, status); });
    EXPECT_EQ(outcome.status, 0) << status;
    EXPECT_EQ(outcome.output, "") << status;
  }
  for (const std::string& message :
       {std::string("\x04"), std::string("\x04\x01\xFF\xFFx", 5), std::string("\xFF\x01\0\0", 4)}) {
    const Outcome outcome =
        runWith([&message](BackendDouble& self, int) { self.sendRaw(message); });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
  }
  EXPECT_EQ(runWith([](BackendDouble& self, int) { self.die(); }).status, 0);
}

TEST_F(DeviceWithBackend, EndsAtOnceWhenItIsCancelledWhileItWaits) {
  std::promise<pid_t> started;
  std::future<pid_t> process = started.get_future();
  job_.started = [&](pid_t child) { started.set_value(child); };
  const Outcome outcome = runWith([&](BackendDouble&, int) { kill(process.get(), SIGTERM); });
  EXPECT_EQ(outcome.signal, SIGTERM);
  EXPECT_EQ(outcome.output, "");
}

TEST_F(DeviceModel, MayBeMissing) {
  const Outcome outcome = run("<key>DeviceID</key><string>CMD:LDL;</string>");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, "");
}

TEST_F(DeviceModel, SaysWhyItCannotBeLoaded) {
  fs::create_directories(framework() / "Contents");
  const Outcome outcome = run("");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, HasSubstr("DEBUG: The device model failed: "));
  EXPECT_THAT(outcome.errors, HasSubstr("VemoDeviceModel.bundle: its property list names"));
}

TEST_F(DeviceModel, IsNotLoadedForWhatIsNoCommandJob) {
  fs::create_directories(framework() / "Contents");
  Job job("#CUPS-COMMAND\n");
  job.environment["CONTENT_TYPE"] = "text/plain";
  const Outcome outcome = application_.run(job);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors, "");
}

}  // namespace
}  // namespace commandfilter
