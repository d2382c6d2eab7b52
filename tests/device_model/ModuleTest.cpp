// The module as it is loaded, and what is found in it by name.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Doubles.h"
#include "InChild.h"
#include "TestValues.h"
#include "runtime/Bundle.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Comparison.h"
#include "runtime/device_model/ADMCapabilitiesInfoProvider.h"
#include "runtime/device_model/ADMCoreFactory.h"
#include "runtime/device_model/ADMDeviceIDInterpreter.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMModelInfoManager.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

using testing::ask;
using testing::runInChild;
using testing::stringOf;

// Loads the module, which stays until the process ends.
void loadModule() {
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(DEVICE_MODEL_BUNDLE);
  ASSERT_TRUE(bundle) << DEVICE_MODEL_BUNDLE;
  ASSERT_TRUE(bundle->load()) << bundle->loadFailure();
}

TEST(DeviceModelModule, BringsTheFrameworksClasses) {
  runInChild([] {
    for (const char* name : {"ADMCoreFactory", "ADMDeviceIDInterpreter", "ADMModelInfoManager",
                             "ADMCapabilitiesInfoProvider"}) {
      EXPECT_EQ(classNamed(name), nullptr) << name;
    }
    loadModule();
    for (const char* name : {"ADMCoreFactory", "ADMDeviceIDInterpreter", "ADMModelInfoManager",
                             "ADMCapabilitiesInfoProvider"}) {
      EXPECT_NE(classNamed(name), nullptr) << name;
    }
    EXPECT_TRUE(ADMModelInfoManager::sharedManager());
    EXPECT_EQ(ADMDeviceIDInterpreter::initWithDeviceIDString(*String::create("CMD:LDL,PS;"))
                  ->languages()
                  ->count(),
              2U);
  });
}

// The libraries that are only needed for some devices and are loaded now.
std::vector<std::string> loadedOnDemand() {
  const std::string maps = testing::readFile("/proc/self/maps");
  std::vector<std::string> loaded;
  for (const char* name : {"libcups", "libuv"}) {
    if (maps.find(name) != std::string::npos) loaded.emplace_back(name);
  }
  return loaded;
}

TEST(DeviceModelModule, LoadsNeitherLibcupsNorLibuv) {
  runInChild([] {
    // Tests before this one may have.
    const std::vector<std::string> before = loadedOnDemand();
    loadModule();
    EXPECT_EQ(loadedOnDemand(), before);
  });
}

TEST(DeviceModelModule, ServesASimulatedDevice) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.path() / "device.plist";
  testing::writeFile(path,
                     "<plist><dict><key>DeviceID</key><string>MFG:A;</string>"
                     "<key>StatusServices</key><dict><key>DMFDeviceStatus</key><dict>"
                     "<key>Messages</key><dict><key>deviceState</key><string>idle</string></dict>"
                     "</dict><key>CapabilitiesInfoProvider</key><dict><key>Messages</key><dict>"
                     "<key>supportedSupplies</key><integer>4</integer></dict></dict></dict>"
                     "</dict></plist>");
  runInChild([&path] {
    loadModule();
    const auto core = ADMCoreFactory::find();
    ASSERT_TRUE(core);
    const Ref<String> uri = String::create("simulated://" + path);
    const RefPtr<ADMServiceInfo> info = core->newServiceInfoWithURI_deviceClass(
        *uri, *String::create(std::string(kPrinterDeviceClass)));
    ASSERT_TRUE(info);
    info->resolveWithTimeout(30);
    EXPECT_EQ(info->serviceState(), kServiceStateResolved);
    const Value device = info;
    EXPECT_EQ(core->newDeviceIDServiceFactory()
                  ->deviceIDAccessProviderForServiceInfo(device)
                  ->deviceID()
                  ->view(),
              "MFG:A;");
    const Value status = core->newStatusFactory()->interfaceForProtocol_serviceInfo(
        ADMDeviceStatus::kProtocol, device);
    EXPECT_TRUE(equal(ask(status, "deviceState"), stringOf("idle")));
    const Value capabilities = ADMCapabilitiesInfoProvider::initWithServiceInfo(device);
    EXPECT_TRUE(equal(ask(capabilities, "supportedSupplies"), Number::integer(4)));
  });
}

TEST(DeviceModelModule, HasNothingForWhatIsNoDevice) {
  runInChild([] {
    loadModule();
    const auto core = ADMCoreFactory::find();
    ASSERT_TRUE(core);
    const Value stranger = stringOf("x");
    EXPECT_EQ(core->newDeviceIDServiceFactory()->deviceIDAccessProviderForServiceInfo(stranger),
              nullptr);
    EXPECT_EQ(core->newDeviceIDServiceFactory()->deviceIDAccessProviderForServiceInfo(Value()),
              nullptr);
    EXPECT_TRUE(core->newStatusFactory()
                    ->interfaceForProtocol_serviceInfo(ADMDeviceStatus::kProtocol, stranger)
                    .isNil());
    EXPECT_TRUE(ADMCapabilitiesInfoProvider::initWithServiceInfo(stranger).isNil());
    EXPECT_EQ(core->newServiceInfoWithURI_deviceClass(*String::create("socket://a"),
                                                      *String::create("Scanner")),
              nullptr);
  });
}

TEST(DeviceModelModule, ServesARealDevice) {
  runInChild([] {
    loadModule();
    const RefPtr<ADMServiceInfo> info = ADMCoreFactory::find()->newServiceInfoWithURI_deviceClass(
        *String::create("socket://a"), *String::create(std::string(kPrinterDeviceClass)));
    ASSERT_TRUE(info);
    info->resolveWithTimeout(30);
    EXPECT_EQ(info->serviceState(), kServiceStateResolved);
    EXPECT_EQ(info->connectionType()->view(), "Network");
  });
}

}  // namespace
}  // namespace commandfilter
