// CUPS's own `socket` backend, a printer that listens, and its SNMP agent.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "integration/JobFixture.h"
#include "integration/devices/LoopbackAddress.h"
#include "integration/devices/PrinterAgent.h"
#include "integration/devices/PrinterListener.h"
#include "support/File.h"

namespace commandfilter::testing {
namespace {

using ::testing::Contains;

class SocketDevice : public JobFixture {
 protected:
  void SetUp() override {
    const std::string reason = PrinterAgent::unavailable(address_);
    if (!reason.empty()) GTEST_SKIP() << reason;
    product_.addPlugIn("DeviceReport", {"Report identity", "Report state", "Report supplies"});
    listener_.emplace(address_);
    scheduler_.addQueue("queue", "socket://" + address_ + ":" + std::to_string(listener_->port()),
                        PrivateScheduler::ppd());
  }
  void startAgent(const std::string& values = readFile(PrinterAgent::values())) {
    agent_.emplace(address_, values);
  }
  std::string print(std::string_view lines = "") {
    submit("queue", lines);
    return wait();
  }

  const std::string address_ = loopbackAddress();
  std::optional<PrinterListener> listener_;
  std::optional<PrinterAgent> agent_;
};

TEST_F(SocketDevice, GetsThePacketWhenItsAgentSaysThatItSpeaksLDL) {
  startAgent();
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(listener_->finish(), kPacket);
}

TEST_F(SocketDevice, GetsZerosWhenItsAgentSaysThatItDoesNot) {
  std::string values = readFile(PrinterAgent::values());
  values.replace(values.find("PCL,LDL"), 7, "PCL");
  startAgent(values);
  EXPECT_EQ(print(), "completed");
  EXPECT_EQ(listener_->finish(), kZeros);
}

TEST_F(SocketDevice, TellsWhatItIs) {
  startAgent();
  EXPECT_EQ(print("Report identity\n"), "completed");
  const auto lines = log();
  EXPECT_THAT(lines, Contains("device ID = MFG:Acme;MDL:Colour Press 9;CMD:PCL,LDL;SN:SN-1284;"));
  EXPECT_THAT(lines, Contains("model = Colour Press 9"));
  EXPECT_THAT(lines, Contains("vendor = Acme"));
}

TEST_F(SocketDevice, TellsItsState) {
  startAgent();
  EXPECT_EQ(print("Report state\n"), "completed");
  const auto lines = log();
  EXPECT_THAT(lines, Contains("state = idle"));
  EXPECT_THAT(lines, Contains("reason = door-open"));
  EXPECT_THAT(lines, Contains("reason = marker-supply-low"));
  EXPECT_THAT(lines, Contains("serial number = SN-1284"));
  EXPECT_THAT(lines, Contains("name = Example Command Printer"));
}

TEST_F(SocketDevice, TellsAboutItsSupplies) {
  startAgent();
  EXPECT_EQ(print("Report supplies\n"), "completed");
  const auto lines = log();
  EXPECT_THAT(lines, Contains("supply 1 = Black Cartridge, toner, level 42, black, #000000"));
  EXPECT_THAT(lines, Contains("supply 2 = Cyan Cartridge, toner, level 3, cyan, #00FFFF"));
  EXPECT_THAT(lines, Contains("supply 3 = Waste Box, wasteToner, level 70, (null), (null)"));
}

TEST_F(SocketDevice, AnswersEverythingBeforeItGetsItsFirstByte) {
  startAgent();
  EXPECT_EQ(print("Report supplies\nReport state\nReport identity\n"), "completed");
  EXPECT_THAT(log(), Contains("end of the report").Times(3));
  EXPECT_EQ(listener_->finish(), kPacket);
}

TEST_F(SocketDevice, IsTheQueuesDeviceWithoutADeviceIDOfItsOwn) {
  startAgent(
      ".1.3.6.1.2.1.25.3.2.1.3.1 string Acme Colour Press 9\n"
      ".1.3.6.1.4.1.2699.1.2.1.2.1.1.3.1 string \n");
  EXPECT_EQ(print("Report identity\n"), "completed");
  EXPECT_THAT(log(),
              Contains("device ID = MFG:Example;MDL:Command Printer;CMD:PCL;CLS:PRINTER;SN:0001;"));
  EXPECT_EQ(listener_->finish(), kZeros);
}

TEST(PrinterAgents, LeaveTheirPort) {
  const std::string address = loopbackAddress();
  const std::string reason = PrinterAgent::unavailable(address);
  if (!reason.empty()) GTEST_SKIP() << reason;
  {
    const PrinterAgent agent(address, readFile(PrinterAgent::values()));
    EXPECT_NE(PrinterAgent::unavailable(address), "");
  }
  EXPECT_EQ(PrinterAgent::unavailable(address), "");
}

// With its agent shut out, which needs no port of the system's.
using SocketDeviceWithoutAgent = JobFixture;
TEST_F(SocketDeviceWithoutAgent, IsTheQueuesDevice) {
  PrinterListener listener(loopbackAddress());
  scheduler_.addQueue(
      "queue",
      "socket://" + loopbackAddress() + ":" + std::to_string(listener.port()) + "/?snmp=false",
      PrivateScheduler::ppd());
  product_.addPlugIn("DeviceReport", {"Report identity"});
  submit("queue", "Report identity\n");
  EXPECT_EQ(wait(), "completed");
  EXPECT_THAT(log(), Contains("model = Command Printer"));
  EXPECT_EQ(listener.finish(), kZeros);
}

}  // namespace
}  // namespace commandfilter::testing
