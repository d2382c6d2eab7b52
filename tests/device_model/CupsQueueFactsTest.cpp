#include "device_model/CupsQueueFacts.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdlib>
#include <string>

#include "InChild.h"
#include "runtime/FileDescriptor.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

// The variables that the scheduler sets, for as long as the test runs.
class CupsQueue : public ::testing::Test {
 protected:
  ~CupsQueue() override {
    unsetenv("PPD");
    unsetenv("PRINTER");
    unsetenv("CUPS_SERVER");
  }
  void usePPD(const std::string& lines) {
    const std::string path = folder_.path() / "queue.ppd";
    testing::writeFile(path, "*PPD-Adobe: \"4.3\"\n" + lines);
    setenv("PPD", path.c_str(), 1);
  }

  testing::TemporaryFolder folder_;
  CupsQueueFacts facts_;
};

TEST_F(CupsQueue, HasTheAttributesOfItsPPD) {
  usePPD("*1284DeviceID: \"MFG:Acme;CMD:LDL;\"\n*ModelName: \"M 1\"\n*Empty: \"\"\n");
  EXPECT_EQ(facts_.ppdAttribute("1284DeviceID"), "MFG:Acme;CMD:LDL;");
  EXPECT_EQ(facts_.ppdAttribute("ModelName"), "M 1");
  EXPECT_EQ(facts_.ppdAttribute("Manufacturer"), "");
}

TEST_F(CupsQueue, HasNoAttributesWithoutAPPD) {
  EXPECT_EQ(facts_.ppdAttribute("ModelName"), "");
  setenv("PPD", (folder_.path() / "missing.ppd").c_str(), 1);
  EXPECT_EQ(facts_.ppdAttribute("ModelName"), "");
  testing::writeFile(folder_.path() / "missing.ppd", "rubbish");
  EXPECT_EQ(facts_.ppdAttribute("ModelName"), "");
}

TEST_F(CupsQueue, HasTheInstallableOptionsOfItsPPD) {
  usePPD(
      "*OpenGroup: InstallableOptions/Options Installed\n"
      "*OpenUI *Duplexer/Duplex Unit: Boolean\n*DefaultDuplexer: False\n"
      "*Duplexer True/Installed: \"\"\n*Duplexer False/Not Installed: \"\"\n*CloseUI: *Duplexer\n"
      "*CloseGroup: InstallableOptions\n"
      "*OpenUI *InputSlot: PickOne\n*DefaultInputSlot: Auto\n*InputSlot Auto: \"\"\n"
      "*CloseUI: *InputSlot\n");
  const std::vector<InstallableOption> options = facts_.installableOptions();
  ASSERT_EQ(options.size(), 1U);
  EXPECT_EQ(options[0].keyword, "Duplexer");
  EXPECT_EQ(options[0].text, "Duplex Unit");
  EXPECT_EQ(options[0].current, "False");
  EXPECT_EQ(options[0].choices, (std::vector<std::string>{"True", "False"}));
}

TEST_F(CupsQueue, HasNoInstallableOptionsWithoutThem) {
  EXPECT_TRUE(facts_.installableOptions().empty());
  usePPD("*ModelName: \"M 1\"\n");
  EXPECT_TRUE(facts_.installableOptions().empty());
}

TEST_F(CupsQueue, HasNoAttributesWithoutAScheduler) {
  EXPECT_TRUE(facts_.attributes().empty());
  CupsQueueFacts other;
  setenv("PRINTER", "queue", 1);
  setenv("CUPS_SERVER", (folder_.path() / "socket").c_str(), 1);
  EXPECT_TRUE(other.attributes().empty());
}

TEST_F(CupsQueue, HasNoAttributesWhenTheSchedulerHangs) {
  // It accepts connections and says nothing.
  const FileDescriptor scheduler(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = folder_.path() / "socket";
  ASSERT_LT(path.size(), sizeof address.sun_path);
  path.copy(static_cast<char*>(address.sun_path), path.size());
  ASSERT_EQ(bind(scheduler.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(scheduler.get(), 1), 0);
  setenv("PRINTER", "queue", 1);
  setenv("CUPS_SERVER", path.c_str(), 1);
  testing::runInChild([] {
    constexpr double kShort = 0.05;
    CupsQueueFacts facts(kShort);
    EXPECT_TRUE(facts.attributes().empty());
  });
}

TEST_F(CupsQueue, TakesURIsApart) {
  const URIParts parts = facts_.partsOfURI("socket://printer.example:9101/a%20b?serial=1%202");
  EXPECT_EQ(parts.scheme, "socket");
  EXPECT_EQ(parts.host, "printer.example");
  EXPECT_EQ(parts.port, 9101);
  EXPECT_EQ(parts.resource, "/a b?serial=1 2");
  EXPECT_EQ(facts_.partsOfURI("").scheme, "");
  EXPECT_EQ(facts_.partsOfURI(std::string(100'000, 'a')).host, "");
}

}  // namespace
}  // namespace commandfilter
