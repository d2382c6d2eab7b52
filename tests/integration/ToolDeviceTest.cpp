// admtemplate before CUPS's own `socket` backend, a printer's SNMP agent and a scheduler.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "integration/PrivateScheduler.h"
#include "integration/devices/LoopbackAddress.h"
#include "integration/devices/PrinterAgent.h"
#include "integration/devices/PrinterListener.h"
#include "support/ChildProcess.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"
#include "tools/Admtemplate.h"

namespace commandfilter::testing {
namespace {

using ::testing::HasSubstr;

class ToolDevice : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = PrinterAgent::unavailable(address_);
    if (!reason.empty()) GTEST_SKIP() << reason;
    agent_ = std::make_unique<PrinterAgent>(address_, readFile(PrinterAgent::values()));
  }
  static std::string ask(const std::string& device, const std::string& service,
                         const std::string& expression) {
    const ChildResult result = runAdmtemplate({"eval", "--device", device, "--service", service,
                                               "--expression", expression, "--format", "json"});
    EXPECT_EQ(result.errors, "");
    return result.output;
  }

  const std::string address_ = loopbackAddress();
  std::unique_ptr<PrinterAgent> agent_;
  TemporaryFolder folder_;
};

TEST_F(ToolDevice, TellsAboutAPrinterOnTheNetworkAndPrintsNothing) {
  PrinterListener listener(address_);
  const std::string uri = "socket://" + address_ + ":" + std::to_string(listener.port());
  const ChildResult result = runAdmtemplate({"device", uri});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output,
              HasSubstr("Device ID:   MFG:Acme;MDL:Colour Press 9;CMD:PCL,LDL;SN:SN-1284;\n"));
  EXPECT_THAT(result.output, HasSubstr("  @deviceState = \"idle\"\n"));
  EXPECT_THAT(result.output, HasSubstr("  @supplyLevelForIdentifier: of 2 = 3\n"));
  EXPECT_THAT(result.output, HasSubstr("  {supplies}[1].level = 42\n"));
  EXPECT_EQ(listener.finish(), "");
}

TEST_F(ToolDevice, IsSavedAsADescriptionThatAnswersTheSame) {
  // Nothing listens for data there, which nothing needs either.
  const std::string uri = "socket://" + address_;
  const ChildResult result = runAdmtemplate({"device", uri, "--format", "plist"});
  EXPECT_EQ(result.exitStatus, 0);
  const std::string saved = (folder_.path() / "saved.plist").string();
  writeFile(saved, result.output);
  const auto expectSame = [&](const std::string& service, const std::string& expression) {
    EXPECT_EQ(ask(saved, service, expression), ask(uri, service, expression)) << expression;
  };
  for (const char* expression :
       {"_Array(@deviceState, @deviceSerialNumber, @humanReadableModelName)", "@deviceSubstate",
        "{state}.reasons", "{model}.deviceID", "{pageCount}", "@deviceUIState", "@isAvailable"}) {
    expectSame("DMFDeviceStatus", expression);
  }
  for (const char* expression :
       {"@suppliesIdentifiers", "{supplies}", "{supplies}.level", "{supplies}.rgb",
        "{supplies}.remainingPages", "{supplies}[3].name", "{supplies}[3].rgb",
        "_Filter(@suppliesIdentifiers, @supplyLevelForIdentifier: lt 50)",
        "_Aggregate(@suppliesIdentifiers, @initial + @supplyNameForIdentifier:, _Array())",
        "_Aggregate(@suppliesIdentifiers, @initial + @supplyColorNameForIdentifier:, _Array())"}) {
    expectSame("DMFSuppliesStatus", expression);
  }
}

TEST_F(ToolDevice, IsNamedByItsQueueToo) {
  const std::string reason = PrivateScheduler::unavailable();
  if (!reason.empty()) GTEST_SKIP() << reason;
  const PrivateScheduler scheduler;
  scheduler.addQueue("press", "socket://" + address_, PrivateScheduler::ppd());
  const std::vector<std::string> variables{"CUPS_SERVER=" + scheduler.variable("CUPS_SERVER")};
  const ChildResult list = runAdmtemplate({"device"}, {}, variables);
  EXPECT_EQ(list.exitStatus, 0);
  EXPECT_THAT(list.output, HasSubstr("Queues of the scheduler:\n  press  socket://" + address_));
  const ChildResult device = runAdmtemplate({"device", "press"}, {}, variables);
  EXPECT_EQ(device.exitStatus, 0);
  EXPECT_THAT(device.output, HasSubstr("Model:       Colour Press 9\n"));
  const ChildResult missing = runAdmtemplate({"device", "presss"}, {}, variables);
  EXPECT_EQ(missing.exitStatus, 2);
  EXPECT_THAT(missing.errors, HasSubstr("no such queue"));
}

}  // namespace
}  // namespace commandfilter::testing
