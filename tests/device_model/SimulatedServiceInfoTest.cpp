#include "device_model/SimulatedServiceInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "Doubles.h"
#include "InChild.h"
#include "TestValues.h"
#include "device_model/DescribedServiceFactories.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Comparison.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMSuppliesStatus.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

using testing::ask;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::RecordingDelegate;
using testing::stringOf;

class SimulatedDevice : public ::testing::Test {
 protected:
  Ref<SimulatedServiceInfo> device(const std::string& entries) {
    testing::writeFile(path_, "<plist><dict>" + entries + "</dict></plist>");
    return SimulatedServiceInfo::create(*String::create("simulated://" + path_));
  }
  // Resolves in a mode of the run loop, and runs it until the delegate has removed the device.
  std::vector<std::string> resolve(ADMServiceInfo& info, double timeout = 30) {
    const Ref<RecordingDelegate> delegate = make<RecordingDelegate>();
    const Ref<RunLoop> loop = RunLoop::currentRunLoop();
    const Ref<String> mode = String::create("TEST_MODE");
    delegate->then = [&](ADMServiceInfo& ended) { ended.removeFromRunLoop_forMode(*loop, *mode); };
    info.setDelegate(delegate.get());
    info.scheduleInRunLoop_forMode(*loop, *mode);
    info.resolveWithTimeout(timeout);
    while (loop->runMode_beforeDate(*mode, RunLoop::dateAfter(0.4))) {
    }
    info.setDelegate(nullptr);
    return delegate->calls;
  }

  testing::TemporaryFolder folder_;
  std::string path_ = folder_.path() / "device.plist";
};

constinit const Class kTakenFactory{.name = "ADMTakenServiceFactory", .base = &Object::kClass};

const std::string kService =
    "<key>StatusServices</key><dict>"
    "<key>DMFDeviceStatus</key><dict><key>Messages</key><dict><key>deviceState</key>"
    "<string>idle</string></dict></dict>"
    "<key>CapabilitiesInfoProvider</key><dict><key>Messages</key><dict>"
    "<key>supportedSupplies</key><array/></dict></dict></dict>";

TEST_F(SimulatedDevice, ResolvesAtOnceUnlessItsDescriptionSaysOtherwise) {
  const Ref<SimulatedServiceInfo> info = device("");
  EXPECT_EQ(info->serviceState(), 0);
  EXPECT_THAT(resolve(*info), ElementsAre("resolved"));
  EXPECT_EQ(info->serviceState(), 1);
}

TEST_F(SimulatedDevice, ResolvesAfterTheDelay) {
  const Ref<SimulatedServiceInfo> info =
      device("<key>Resolution</key><dict><key>Delay</key><real>0.01</real></dict>");
  EXPECT_THAT(resolve(*info), ElementsAre("resolved"));
  EXPECT_EQ(info->serviceState(), 1);
}

TEST_F(SimulatedDevice, TellsNobodyBeforeTheRunLoopRuns) {
  const Ref<SimulatedServiceInfo> info =
      device("<key>Resolution</key><dict><key>Delay</key><real>0.01</real></dict>");
  const Ref<RecordingDelegate> delegate = make<RecordingDelegate>();
  info->setDelegate(delegate.get());
  info->resolveWithTimeout(30);
  EXPECT_THAT(delegate->calls, IsEmpty());
  EXPECT_EQ(info->serviceState(), 0);
  // Scheduling it later is early enough.
  const Ref<RunLoop> loop = RunLoop::currentRunLoop();
  const Ref<String> mode = String::create("TEST_MODE");
  info->scheduleInRunLoop_forMode(*loop, *mode);
  while (loop->runMode_beforeDate(*mode, RunLoop::dateAfter(0.4))) {
  }
  EXPECT_THAT(delegate->calls, ElementsAre("resolved"));
}

TEST_F(SimulatedDevice, IsNotTalkedAboutOnceItIsRemoved) {
  const Ref<SimulatedServiceInfo> info =
      device("<key>Resolution</key><dict><key>Delay</key><real>0.01</real></dict>");
  const Ref<RecordingDelegate> delegate = make<RecordingDelegate>();
  const Ref<RunLoop> loop = RunLoop::currentRunLoop();
  const Ref<String> mode = String::create("TEST_MODE");
  info->setDelegate(delegate.get());
  info->scheduleInRunLoop_forMode(*loop, *mode);
  info->resolveWithTimeout(30);
  info->removeFromRunLoop_forMode(*loop, *mode);
  EXPECT_FALSE(loop->runMode_beforeDate(*mode, RunLoop::dateAfter(0.4)));
  EXPECT_THAT(delegate->calls, IsEmpty());
}

TEST_F(SimulatedDevice, TellsOnceHoweverOftenItIsScheduled) {
  const Ref<SimulatedServiceInfo> info =
      device("<key>Resolution</key><dict><key>Delay</key><real>0.01</real></dict>");
  const Ref<RecordingDelegate> delegate = make<RecordingDelegate>();
  const Ref<RunLoop> loop = RunLoop::currentRunLoop();
  const Ref<String> first = String::create("FIRST_MODE");
  const Ref<String> second = String::create("SECOND_MODE");
  const Ref<String> third = String::create("THIRD_MODE");
  info->setDelegate(delegate.get());
  for (const Ref<String>& mode : {first, second, third}) {
    info->scheduleInRunLoop_forMode(*loop, *mode);
  }
  info->resolveWithTimeout(30);
  info->removeFromRunLoop_forMode(*loop, *first);
  EXPECT_FALSE(loop->runMode_beforeDate(*first, RunLoop::dateAfter(0.4)));
  while (loop->runMode_beforeDate(*second, RunLoop::dateAfter(0.4))) {
  }
  EXPECT_THAT(delegate->calls, ElementsAre("resolved"));
  // Nothing is left to wait for in the other mode.
  EXPECT_FALSE(loop->runMode_beforeDate(*third, RunLoop::dateAfter(0.4)));
  EXPECT_THAT(delegate->calls, ElementsAre("resolved"));
}

TEST_F(SimulatedDevice, MayLetItsDelegateGoWithIt) {
  RefPtr<SimulatedServiceInfo> info =
      device("<key>Resolution</key><dict><key>Delay</key><real>0.01</real></dict>");
  const Ref<RecordingDelegate> delegate = make<RecordingDelegate>();
  const Ref<RunLoop> loop = RunLoop::currentRunLoop();
  const Ref<String> mode = String::create("TEST_MODE");
  delegate->then = [&](ADMServiceInfo& /*ended*/) { info = nullptr; };
  info->setDelegate(delegate.get());
  info->scheduleInRunLoop_forMode(*loop, *mode);
  info->resolveWithTimeout(30);
  while (loop->runMode_beforeDate(*mode, RunLoop::dateAfter(0.4))) {
  }
  EXPECT_THAT(delegate->calls, ElementsAre("resolved"));
}

TEST_F(SimulatedDevice, FailsWhenNothingCanBeWaitedFor) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizers need descriptors for their own checks";
#endif
  RefPtr<SimulatedServiceInfo> info =
      device("<key>Resolution</key><dict><key>Delay</key><integer>1000</integer></dict>");
  testing::runInChild([&info] {
    const Ref<RecordingDelegate> delegate = make<RecordingDelegate>();
    delegate->then = [&](ADMServiceInfo& /*ended*/) { info = nullptr; };
    const Ref<RunLoop> loop = RunLoop::currentRunLoop();
    for (const char* mode : {"FIRST_MODE", "SECOND_MODE"}) {
      info->scheduleInRunLoop_forMode(*loop, *String::create(mode));
    }
    info->setDelegate(delegate.get());
    // The description is read and libuv loaded; a new mode still needs descriptors.
    EXPECT_EQ(info->modelName(), nullptr);
    EXPECT_TRUE(loop->addTimer(0, *String::create("OTHER_MODE"), [] {}));
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    ADMServiceInfo& device = *info;
    device.resolveWithTimeout(30);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_THAT(delegate->calls, ElementsAre(HasSubstr("cannot wait for the device: ")));
  });
}

TEST_F(SimulatedDevice, IsUnresolvedWhileItResolvesAgain) {
  const Ref<SimulatedServiceInfo> info =
      device("<key>Resolution</key><dict><key>Delay</key><real>0.01</real></dict>");
  EXPECT_THAT(resolve(*info), ElementsAre("resolved"));
  info->resolveWithTimeout(30);
  EXPECT_EQ(info->serviceState(), 0);
}

TEST_F(SimulatedDevice, FailsWhenItsDescriptionSaysSo) {
  const Ref<SimulatedServiceInfo> info =
      device("<key>Resolution</key><dict><key>Outcome</key><string>fail</string></dict>");
  EXPECT_THAT(resolve(*info),
              ElementsAre("the description of the device says that it does not resolve"));
  EXPECT_EQ(info->serviceState(), 0);
}

TEST_F(SimulatedDevice, GivesUpAtTheTimeout) {
  const Ref<SimulatedServiceInfo> never =
      device("<key>Resolution</key><dict><key>Outcome</key><string>never</string></dict>");
  EXPECT_THAT(resolve(*never, 0.01), ElementsAre("the device did not answer in time"));
  EXPECT_EQ(never->serviceState(), 0);
  const Ref<SimulatedServiceInfo> slow =
      device("<key>Resolution</key><dict><key>Delay</key><integer>1000</integer></dict>");
  EXPECT_THAT(resolve(*slow, 0.01), ElementsAre("the device did not answer in time"));
  for (const double none : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THAT(resolve(*slow, none), ElementsAre("the device did not answer in time"));
  }
}

TEST_F(SimulatedDevice, EndsInTheStateOfItsDescription) {
  const Ref<SimulatedServiceInfo> info =
      device("<key>ServiceState</key><integer>3</integer>" + kService);
  EXPECT_THAT(resolve(*info), ElementsAre("resolved"));
  EXPECT_EQ(info->serviceState(), 3);
  EXPECT_TRUE(info->statusService(ADMDeviceStatus::kProtocol).isNil());
}

TEST_F(SimulatedDevice, ExplainsADescriptionThatCannotBeUsed) {
  const Ref<SimulatedServiceInfo> wrong = device("<key>ModelInfo</key><true/>");
  EXPECT_THAT(resolve(*wrong), ElementsAre(path_ + ": ModelInfo is not a dictionary"));
  EXPECT_EQ(wrong->serviceState(), 0);
  EXPECT_EQ(wrong->modelName(), nullptr);
  const Ref<SimulatedServiceInfo> missing =
      SimulatedServiceInfo::create(*String::create("simulated:///does/not/exist.plist"));
  EXPECT_THAT(resolve(*missing), ElementsAre(HasSubstr("/does/not/exist.plist: ")));
  const Ref<SimulatedServiceInfo> nothing =
      SimulatedServiceInfo::create(*String::create("simulated://"));
  EXPECT_THAT(resolve(*nothing), ElementsAre(HasSubstr("simulated:// names no file")));
  EXPECT_EQ(nothing->uri()->view(), "simulated://");
}

TEST_F(SimulatedDevice, IsAsDescribed) {
  const Ref<SimulatedServiceInfo> info = device(
      "<key>DeviceID</key><string>MFG:A;</string><key>URI</key><string>socket://a</string>"
      "<key>ConnectionType</key><string>Rendezvous</string><key>VendorName</key>"
      "<string>Acme</string><key>ModelName</key><string>M</string><key>ConnectionParams</key>"
      "<dict><key>IPAddress</key><string>10.0.0.5</string></dict><key>ModelInfo</key><dict>"
      "<key>T</key><dict><key>p</key><integer>4</integer></dict></dict>");
  EXPECT_EQ(info->deviceID()->view(), "MFG:A;");
  EXPECT_EQ(info->uri()->view(), "socket://a");
  EXPECT_EQ(info->connectionType()->view(), "Rendezvous");
  EXPECT_EQ(info->vendorName()->view(), "Acme");
  EXPECT_EQ(info->modelName()->view(), "M");
  EXPECT_EQ(textOf(castTo<String>(info->connectionParams()->objectForKey("IPAddress"))),
            "10.0.0.5");
  const Value found = info->modelInfo()->valueForInfoPath_inTable(String::create("p").get(),
                                                                  String::create("T").get());
  EXPECT_TRUE(equal(found, Number::integer(4)));
}

TEST_F(SimulatedDevice, HasNilForWhatIsNotDescribed) {
  const Ref<SimulatedServiceInfo> info = device("");
  resolve(*info);
  EXPECT_EQ(info->deviceID(), nullptr);
  EXPECT_EQ(info->uri()->view(), "simulated://" + path_);
  EXPECT_EQ(info->connectionType(), nullptr);
  EXPECT_EQ(info->vendorName(), nullptr);
  EXPECT_EQ(info->modelName(), nullptr);
  EXPECT_EQ(info->connectionParams(), nullptr);
  EXPECT_TRUE(info->statusService(ADMDeviceStatus::kProtocol).isNil());
  EXPECT_TRUE(info->capabilitiesProvider().isNil());
}

TEST_F(SimulatedDevice, HasTheServicesThatAreDescribed) {
  const Ref<SimulatedServiceInfo> info = device(kService);
  EXPECT_TRUE(info->statusService(ADMDeviceStatus::kProtocol).isNil()) << "not resolved yet";
  resolve(*info);
  const Value status = info->statusService(ADMDeviceStatus::kProtocol);
  EXPECT_TRUE(equal(ask(status, "deviceState"), stringOf("idle")));
  EXPECT_TRUE(conformsToProtocol(status, ADMDeviceStatus::kProtocol));
  EXPECT_TRUE(info->statusService(ADMSuppliesStatus::kProtocol).isNil());
  EXPECT_TRUE(info->statusService(ADMInterface::kProtocol).isNil());
  EXPECT_TRUE(equal(ask(info->capabilitiesProvider(), "supportedSupplies"), testing::arrayOf({})));
}

TEST_F(SimulatedDevice, AnswersByNameToo) {
  const Ref<SimulatedServiceInfo> info = device("<key>ModelName</key><string>M</string>");
  EXPECT_TRUE(equal(ask(info, "modelName"), stringOf("M")));
  EXPECT_TRUE(equal(ask(info, "serviceState"), Number::integer(0)));
  EXPECT_TRUE(ask(info, "vendorName").isNil());
}

TEST_F(SimulatedDevice, MakesFactoriesForServicesOfOtherNames) {
  EXPECT_EQ(classNamed("ADMPaperServiceFactory"), nullptr);
  const Ref<SimulatedServiceInfo> info = device(
      "<key>StatusServices</key><dict><key>Paper</key><dict><key>Messages</key><dict>"
      "<key>sheets</key><integer>5</integer></dict></dict>"
      "<key>DMFDeviceStatus</key><dict/></dict>");
  resolve(*info);
  const Class* factory = classNamed("ADMPaperServiceFactory");
  ASSERT_NE(factory, nullptr);
  const Selector make("statusServiceForDMFServiceInfo:");
  const Value service = sendToClass(*factory, make, {info});
  EXPECT_TRUE(equal(ask(service, "sheets"), Number::integer(5)));
  EXPECT_EQ(classNamed("ADMDMFDeviceStatusServiceFactory"), nullptr);
  const std::array<const Class*, 1> own{&kTakenFactory};
  const auto registration = ClassRegistry::shared().add(own);
  resolve(*device("<key>StatusServices</key><dict><key>Taken</key><dict/></dict>"));
  EXPECT_EQ(classNamed("ADMTakenServiceFactory"), &kTakenFactory);
  const Ref<SimulatedServiceInfo> other = device("");
  resolve(*other);
  EXPECT_TRUE(sendToClass(*factory, make, {other}).isNil());
  EXPECT_TRUE(sendToClass(*factory, make, {Value()}).isNil());
}

TEST_F(SimulatedDevice, MakesFactoriesForSoManyServicesOnly) {
  std::string services = "<key></key><dict/>";
  for (int i = 0; i < 3 * DescribedServiceFactories::kMost; ++i) {
    services += "<key>Many" + std::to_string(i) + "</key><dict/>";
  }
  const Ref<SimulatedServiceInfo> info =
      device("<key>StatusServices</key><dict>" + services + "</dict>");
  testing::runInChild([&info, this] {
    EXPECT_THAT(resolve(*info), ElementsAre("resolved"));
    EXPECT_NE(classNamed("ADMMany0ServiceFactory"), nullptr);
    EXPECT_EQ(classNamed("ADMServiceFactory"), nullptr);
    EXPECT_EQ(
        classNamed("ADMMany" + std::to_string(DescribedServiceFactories::kMost) + "ServiceFactory"),
        nullptr);
  });
}

}  // namespace
}  // namespace commandfilter
