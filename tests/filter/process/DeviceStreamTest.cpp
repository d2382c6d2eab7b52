#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "filter/DummyJobs.h"
#include "process/FilterApplication.h"
#include "support/File.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using ::testing::EndsWith;
using testing::FilterApplication;
using ::testing::HasSubstr;
using testing::Job;
using testing::kPacket;
using testing::kZeros;
using testing::Outcome;
using ::testing::StartsWith;

class DeviceStream : public ::testing::Test {
 protected:
  DeviceStream() {
    application_.addPlugIn("DeviceModel");
    application_.addPlugIn("Echo");
    setDeviceID("MFG:Acme;CMD:PCL,LDL,PS;");
  }

  void setDeviceID(const std::string& identifier) {
    job_.environment["TEST_DEVICE_ID"] = identifier;
  }
  // Lets the program write into a pipe whose reader is gone.
  void breakPipe(int descriptor) {
    const fs::path fifo = application_.root() / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    // Opening a fifo for writing alone would wait for a reader.
    const std::string script =
        "exec 5<>\"$0\" " + std::to_string(descriptor) + ">\"$0\" && exec 5<&- && exec \"$@\"";
    startThrough({"sh", "-c", script, fifo.string(), application_.program().string()});
  }
  void startThrough(std::vector<std::string> words) {
    job_.program = "/bin/sh";
    job_.arguments.erase(job_.arguments.begin());
    job_.arguments.insert(job_.arguments.begin(), words.begin(), words.end());
  }

  FilterApplication application_;
  Job job_{"#CUPS-COMMAND\nLoad the framework\nEcho\n"};
};

const std::string kErrors =
    "the framework is loaded\necho is born\necho answers: Echo\necho is dead\n";

TEST_F(DeviceStream, GetsThePacketForAPrinterThatSpeaksLDL) {
  for (const char* identifier : {"MFG:Acme;CMD:PCL,LDL,PS;", "CMD:LDL;", "CMD:PS,LDL"}) {
    setDeviceID(identifier);
    const Outcome outcome = application_.run(job_);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, kPacket) << identifier;
    EXPECT_EQ(outcome.errors, kErrors);
  }
}

TEST_F(DeviceStream, GetsZerosForAPrinterThatDoesNot) {
  for (const char* identifier : {"MFG:Acme;CMD:PCL,PS;", "CMD:ldl,LDLX;", "MFG:LDL;", ""}) {
    setDeviceID(identifier);
    const Outcome outcome = application_.run(job_);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, kZeros) << identifier;
    EXPECT_EQ(outcome.errors, kErrors);
  }
}

TEST_F(DeviceStream, GetsNothingFromAPrinterWithoutADeviceID) {
  job_.environment.erase("TEST_DEVICE_ID");
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, kErrors);
}

TEST_F(DeviceStream, GetsNothingWithoutAFramework) {
  FilterApplication without;
  without.addPlugIn("Echo");
  const Outcome outcome = without.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, "echo is born\necho answers: Echo\necho is dead\n");
}

TEST_F(DeviceStream, GetsNothingWhenTheFrameworkThrows) {
  for (const char* call : {"newDeviceIDServiceFactory", "deviceIDAccessProviderForServiceInfo:",
                           "deviceID", "initWithDeviceIDString:", "languages"}) {
    job_.environment["TEST_FAILING_CALL"] = call;
    const Outcome outcome = application_.run(job_);
    EXPECT_EQ(outcome.status, 0) << call;
    EXPECT_EQ(outcome.output, "") << call;
    EXPECT_THAT(outcome.errors, StartsWith(kErrors)) << call;
    EXPECT_THAT(outcome.errors.substr(kErrors.size()), StartsWith("DEBUG: ")) << call;
    EXPECT_THAT(outcome.errors, HasSubstr(call));
  }
}

TEST_F(DeviceStream, GetsTheDummyJobOnlyOnceAfterAllCommands) {
  job_.commandFile = "#CUPS-COMMAND\nLoad the framework\nEcho\nLoad the framework\nEcho\n";
  EXPECT_EQ(application_.run(job_).output, kPacket);
}

TEST_F(DeviceStream, IsClosedBeforeTheProgramEnds) {
  for (const bool hasDeviceID : {true, false}) {
    if (!hasDeviceID) job_.environment.erase("TEST_DEVICE_ID");
    job_.environment["REPORT_LOADED_CODE"] = "yes";
    EXPECT_THAT(application_.run(job_).errors,
                EndsWith("unloaded TestEcho, standard output is closed\n"));
  }
}

TEST_F(DeviceStream, MayBeFull) {
  startThrough({"sh", "-c", "exec \"$@\" >/dev/full", "sh", application_.program().string()});
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, kErrors);
}

TEST_F(DeviceStream, MayHaveLostItsReader) {
  breakPipe(1);
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, kErrors);
}

TEST_F(DeviceStream, GetsTheDummyJobWhenStandardErrorHasLostItsReader) {
  breakPipe(2);
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kPacket);
}

TEST_F(DeviceStream, GetsTheDummyJobWhenStandardErrorIsFull) {
  startThrough({"sh", "-c", "exec \"$@\" 2>/dev/full", "sh", application_.program().string()});
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kPacket);
}

TEST_F(DeviceStream, MayBeClosedBeforeTheProgramStarts) {
  job_.closed = {1};
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, kErrors);
}

TEST_F(DeviceStream, GetsTheDummyJobWhenStandardErrorWasClosed) {
  job_.closed = {2};
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kPacket);
  EXPECT_EQ(outcome.errors, "");
}

TEST_F(DeviceStream, GetsTheDummyJobWhenStandardInputWasClosed) {
  job_.closed = {0};
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kPacket);
  EXPECT_EQ(outcome.errors, kErrors);
}

TEST_F(DeviceStream, HasNoCommandsBeforeItWhenTheyWereToComeOnAClosedStandardInput) {
  job_.onInput = true;
  job_.closed = {0};
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "");
}

TEST_F(DeviceStream, MayBeClosedTogetherWithEveryOtherDescriptor) {
  job_.closed = {0, 1, 2, 3, 4};
  const Outcome outcome = application_.run(job_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, "");
}

TEST(ClosedDescriptors, AreNotGivenToAFileThatIsOpenedLater) {
  FilterApplication application;
  application.addPlugIn("Descriptor");
  Job job("#CUPS-COMMAND\nDescriptor\n");
  for (const std::vector<int>& closed :
       {std::vector<int>{3, 4}, {3}, {4}, {0}, {1}, {0, 1, 3, 4}}) {
    job.closed = closed;
    const Outcome outcome = application.run(job);
    EXPECT_EQ(outcome.status, 0);
    const std::string answer = "a new file has the number ";
    ASSERT_THAT(outcome.errors, StartsWith(answer));
    EXPECT_GT(std::stoi(outcome.errors.substr(answer.size())), 4);
  }
}

}  // namespace
}  // namespace commandfilter
