#include "filter/ACommandFilterServiceInfoProvider.h"

#include <gmock/gmock.h>

#include <array>
#include <string>

#include "doubles/RecordingRunLoop.h"
#include "doubles/ResolutionDouble.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Exception.h"
#include "runtime/RunLoop.h"

namespace commandfilter {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using testing::RecordingRunLoop;
using testing::ResolutionDouble;
using ::testing::SizeIs;
using Outcome = ResolutionDouble::Outcome;

constexpr std::array<const Class*, 1> kResolutionDouble{&ResolutionDouble::kCoreFactoryClass};

class ServiceInfoProvider : public ::testing::Test {
 protected:
  ServiceInfoProvider() { framework().reset(); }
  ~ServiceInfoProvider() override { framework().reset(); }

  static ResolutionDouble& framework() { return ResolutionDouble::shared(); }
  static Ref<ACommandFilterServiceInfoProvider> providerFor(const char* uri) {
    return Ref<ACommandFilterServiceInfoProvider>(
        *ACommandFilterServiceInfoProvider::initWithPrinterURI(String::create(uri)));
  }

  ClassRegistry::Registration registration_ = ClassRegistry::shared().add(kResolutionDouble);
  Ref<ACommandFilterServiceInfoProvider> provider_ = providerFor("usb://Acme/M1");
};

TEST_F(ServiceInfoProvider, IsNilForANilURI) {
  EXPECT_EQ(ACommandFilterServiceInfoProvider::initWithPrinterURI(nullptr), nullptr);
}

TEST_F(ServiceInfoProvider, KeepsItsURI) {
  EXPECT_EQ(provider_->printerURI()->view(), "usb://Acme/M1");
  EXPECT_THAT(framework().calls, IsEmpty());
}

TEST_F(ServiceInfoProvider, ConformsToItsProtocols) {
  EXPECT_EQ(castTo<ICommandFilterServiceInfoProvider>(Value(provider_)), provider_.get());
  EXPECT_EQ(castTo<ADMServiceInfoDelegate>(Value(provider_)), provider_.get());
  EXPECT_TRUE(provider_->conformsToProtocol(ICommandFilterServiceInfoProvider::kProtocol));
}

TEST_F(ServiceInfoProvider, HasNoServiceInfoWithoutAFramework) {
  registration_ = ClassRegistry::Registration();
  EXPECT_TRUE(provider_->serviceInfo().isNil());
}

TEST_F(ServiceInfoProvider, ResolvesStepByStep) {
  const Value info = provider_->serviceInfo();
  EXPECT_NE(castTo<ADMServiceInfo>(info), nullptr);
  EXPECT_THAT(framework().calls, ElementsAre("newServiceInfoWithURI:deviceClass:", "setDelegate:",
                                             "scheduleInRunLoop:forMode:", "resolveWithTimeout:",
                                             "serviceInfoDidResolve:", "removeFromRunLoop:forMode:",
                                             "setDelegate:nil", "serviceState"));
  EXPECT_EQ(framework().uri, "usb://Acme/M1");
  EXPECT_EQ(framework().deviceClass, kPrinterDeviceClass);
  EXPECT_EQ(framework().mode, "RESOLVE_MODE");
  EXPECT_EQ(framework().timeout, 30.0);
}

TEST_F(ServiceInfoProvider, HandsAnIOProviderOverForADeviceOnTheSideChannel) {
  const auto provider = providerFor("riousbprint://Acme/M1");
  EXPECT_FALSE(provider->serviceInfo().isNil());
  EXPECT_EQ(framework().calls.front(), "newServiceInfoWithURI:ioProvider:");
  EXPECT_EQ(framework().uri, "riousbprint://Acme/M1");
  EXPECT_EQ(framework().ioProvider, "ADMCUPSSideChannelIOProvider");
  EXPECT_EQ(framework().deviceImplementor, "ADMCUPSSideChannelDevice");
}

TEST_F(ServiceInfoProvider, LeavesOtherDevicesToTheFramework) {
  for (const char* uri : {"socket://printer:9100", "dnssd://Acme._ipp._tcp.local/", "no URI", ""}) {
    framework().reset();
    EXPECT_FALSE(providerFor(uri)->serviceInfo().isNil()) << uri;
    EXPECT_EQ(framework().calls.front(), "newServiceInfoWithURI:deviceClass:") << uri;
    EXPECT_EQ(framework().ioProvider, "") << uri;
  }
}

TEST_F(ServiceInfoProvider, KeepsTheServiceInfo) {
  const Value first = provider_->serviceInfo();
  const std::size_t calls = framework().calls.size();
  EXPECT_TRUE(provider_->serviceInfo().isIdenticalTo(first));
  EXPECT_EQ(framework().calls.size(), calls);
}

TEST_F(ServiceInfoProvider, FailsForGoodWhenNoServiceInfoIsMade) {
  for (const char* uri : {"usb://Acme/M1", "riousbprint://Acme/M1"}) {
    framework().reset();
    framework().makesServiceInfo = false;
    const auto provider = providerFor(uri);
    EXPECT_TRUE(provider->serviceInfo().isNil());
    framework().makesServiceInfo = true;
    EXPECT_TRUE(provider->serviceInfo().isNil());
    EXPECT_THAT(framework().calls, SizeIs(1));
  }
}

TEST_F(ServiceInfoProvider, TriesOnlyOnce) {
  framework().outcome = Outcome::Fails;
  framework().serviceState = 2;
  EXPECT_TRUE(provider_->serviceInfo().isNil());
  const std::size_t calls = framework().calls.size();
  framework().outcome = Outcome::Resolves;
  framework().serviceState = kServiceStateResolved;
  EXPECT_TRUE(provider_->serviceInfo().isNil());
  EXPECT_EQ(framework().calls.size(), calls);
}

TEST_F(ServiceInfoProvider, FailsWhenAResolvedServiceInfoIsInAnotherState) {
  for (const std::int32_t state : {0, 2, -1, INT32_MAX}) {
    framework().serviceState = state;
    EXPECT_TRUE(providerFor("usb://Acme/M1")->serviceInfo().isNil()) << state;
  }
}

TEST_F(ServiceInfoProvider, SucceedsWhenAFailedServiceInfoIsResolvedAllTheSame) {
  framework().outcome = Outcome::Fails;
  EXPECT_FALSE(provider_->serviceInfo().isNil());
  EXPECT_THAT(framework().calls, ::testing::Contains("serviceInfo:didNotResolve:"));
  EXPECT_THAT(framework().calls, ::testing::Contains("removeFromRunLoop:forMode:"));
}

TEST_F(ServiceInfoProvider, ReadsTheStateOfAServiceInfoThatLeavesTheRunLoopByItself) {
  framework().outcome = Outcome::EndsUntold;
  EXPECT_FALSE(provider_->serviceInfo().isNil());
  EXPECT_EQ(framework().delegate, nullptr);
}

TEST_F(ServiceInfoProvider, DoesNotWaitForWhatIsResolvedAtOnce) {
  framework().delay = -1;
  const Ref<RecordingRunLoop> loop = make<RecordingRunLoop>();
  const RunLoop::CurrentScope scope(*loop);
  EXPECT_FALSE(provider_->serviceInfo().isNil());
  EXPECT_THAT(loop->runs, ElementsAre(Field(&RecordingRunLoop::Run::ran, false)));
}

TEST_F(ServiceInfoProvider, WaitsInSlicesAsLongAsTheFrameworkDoesNotCallBack) {
  framework().outcome = Outcome::NeverEnds;
  constexpr std::size_t kRuns = 200;
  const Ref<RecordingRunLoop> loop = make<RecordingRunLoop>();
  const RunLoop::CurrentScope scope(*loop);
  loop->beforeRun = [&](std::size_t runs) {
    // Only the framework can end the wait: here it is told to, after more than a minute of slices.
    if (runs < kRuns) return;
    provider_->serviceInfoDidResolve(*framework().serviceInfo);
  };
  EXPECT_FALSE(provider_->serviceInfo().isNil());
  ASSERT_THAT(loop->runs, SizeIs(kRuns + 1));
  EXPECT_THAT(loop->runs, Each(Field(&RecordingRunLoop::Run::mode, "RESOLVE_MODE")));
  for (std::size_t i = 0; i <= kRuns; ++i) {
    const RecordingRunLoop::Run& run = loop->runs[i];
    EXPECT_EQ(run.ran, i < kRuns);
    constexpr auto kSlice = std::chrono::milliseconds(400);
    EXPECT_GE(run.limit, run.earliest + kSlice);
    EXPECT_LE(run.limit, run.latest + kSlice);
  }
}

TEST_F(ServiceInfoProvider, SchedulesInTheCurrentRunLoop) {
  const Ref<RecordingRunLoop> loop = make<RecordingRunLoop>();
  const RunLoop::CurrentScope scope(*loop);
  EXPECT_FALSE(provider_->serviceInfo().isNil());
  EXPECT_EQ(framework().runLoop, loop.get());
}

TEST_F(ServiceInfoProvider, ServesNoOtherModeMeanwhile) {
  const Ref<RunLoop> loop = RunLoop::currentRunLoop();
  int fired = 0;
  Result<RunLoopSource> other =
      loop->addRepeatingTimer(0.001, *String::create("OTHER_MODE"), [&fired] { ++fired; });
  ASSERT_TRUE(other);
  framework().delay = 0.02;
  EXPECT_FALSE(provider_->serviceInfo().isNil());
  EXPECT_EQ(fired, 0);
}

TEST_F(ServiceInfoProvider, LeavesNothingBehindWhenTheFrameworkThrows) {
  for (const double delay : {-1.0, 0.001}) {
    framework().reset();
    framework().outcome = Outcome::Throws;
    framework().delay = delay;
    const auto provider = providerFor("usb://Acme/M1");
    EXPECT_THROW(static_cast<void>(provider->serviceInfo()), Exception);
    EXPECT_EQ(framework().delegate, nullptr);
    EXPECT_EQ(framework().calls.back(), "setDelegate:nil");
    EXPECT_TRUE(provider->serviceInfo().isNil());
    EXPECT_FALSE(RunLoop::currentRunLoop()->runMode_beforeDate(*String::create("RESOLVE_MODE"),
                                                               RunLoop::Deadline::max()));
  }
}

}  // namespace
}  // namespace commandfilter
