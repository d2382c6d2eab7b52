#include "device_model/CapabilitiesInfoProvider.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Doubles.h"
#include "InChild.h"
#include "TestValues.h"
#include "device_model/ModelInfoManager.h"
#include "runtime/Bundle.h"
#include "runtime/Comparison.h"
#include "runtime/Send.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

using testing::ask;
using testing::ScriptedDevice;
using testing::stringOf;

TEST(CapabilitiesInfoProvider, AnswersFromTheTableForTheModel) {
  const testing::TemporaryFolder folder;
  testing::writeFile(folder.path() / "Capabilities.plist",
                     "<plist><dict><key>M1</key><dict><key>suppliesPlatformCode</key>"
                     "<string>P7</string></dict><key>Default</key><dict>"
                     "<key>supportedSupplies</key><array/><key>odd:</key><true/></dict>"
                     "</dict></plist>");
  ASSERT_TRUE(ModelInfoManager::sharedManager()->registerTable_location(
      String::create("Capabilities").get(), String::create(folder.path().string()).get()));
  ScriptedDevice device;
  device.backend.deviceID = "MDL:M1;";
  const Value provider = CapabilitiesInfoProvider::initWithServiceInfo(device.resolved());
  EXPECT_TRUE(equal(ask(provider, "suppliesPlatformCode"), stringOf("P7")));
  EXPECT_TRUE(equal(ask(provider, "supportedSupplies"), testing::arrayOf({})));
  EXPECT_TRUE(respondsToSelector(provider, Selector("supportedSupplies")));
  EXPECT_FALSE(respondsToSelector(provider, Selector("somethingElse")));
  EXPECT_FALSE(respondsToSelector(provider, Selector("odd:")));
  EXPECT_EQ(methodSignatureForSelector(provider, Selector("supportedSupplies")).methodReturnType(),
            "@");
  EXPECT_NE(testing::reasonOf([&] { static_cast<void>(ask(provider, "somethingElse")); }), "");
}

// A table in the folder for resources of the program's bundle.
class BundledTable {
 public:
  BundledTable() {
    std::filesystem::create_directories(folder());
    testing::writeFile(folder() / "Capabilities.plist",
                       "<plist><dict><key>Default</key><dict><key>supportedSupplies</key><true/>"
                       "</dict></dict></plist>");
  }
  BundledTable(const BundledTable&) = delete;
  BundledTable& operator=(const BundledTable&) = delete;
  ~BundledTable() { std::filesystem::remove_all(folder().parent_path()); }

 private:
  static std::filesystem::path folder() { return Bundle::mainBundle()->resourcePath(); }
};

TEST(CapabilitiesInfoProvider, TakesTheTableOfTheProgramWhenNoneIsRegistered) {
  testing::runInChild([] {
    // Another test may have registered a table that is gone by now.
    if (ModelInfoManager::pathOfTable("Capabilities")) return;
    const BundledTable table;
    ScriptedDevice device;
    const Value provider = CapabilitiesInfoProvider::initWithServiceInfo(device.resolved());
    EXPECT_TRUE(equal(ask(provider, "supportedSupplies"), Value::boolean(true)));
  });
}

TEST(CapabilitiesInfoProvider, RefusesWhatIsNoDevice) {
  EXPECT_TRUE(CapabilitiesInfoProvider::initWithServiceInfo(Value()).isNil());
  EXPECT_TRUE(CapabilitiesInfoProvider::initWithServiceInfo(stringOf("x")).isNil());
}

}  // namespace
}  // namespace commandfilter
