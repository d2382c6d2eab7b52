// The factories of the framework's services, by themselves and through the creator.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/TestValues.h"
#include "template/status/ADMCapabilitiesInfoProviderServiceAdapter.h"
#include "template/status/ADMCapabilitiesInfoProviderServiceFactory.h"
#include "template/status/ADMDMFDeviceStatusServiceFactory.h"
#include "template/status/ADMDMFStatusServiceCreator.h"
#include "template/status/ADMDMFSuppliesStatusServiceFactory.h"
#include "template/status/StatusServiceClasses.h"
#include "template/status/doubles/FrameworkDouble.h"
#include "template/status/doubles/ServiceInfoDouble.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;

const Value kDevice = Number::integer(7);

TEST(StatusServiceFactories, MakeNothingWithoutTheFramework) {
  EXPECT_TRUE(ADMDMFDeviceStatusServiceFactory::statusServiceForDMFServiceInfo(kDevice).isNil());
  EXPECT_TRUE(ADMDMFSuppliesStatusServiceFactory::statusServiceForDMFServiceInfo(kDevice).isNil());
}

TEST(StatusServiceFactories, MakeNothingOfAFrameworkWithoutStatus) {
  {
    const FrameworkDouble framework(FrameworkDouble::Parts::CoreFactoryOnly);
    EXPECT_TRUE(ADMDMFDeviceStatusServiceFactory::statusServiceForDMFServiceInfo(kDevice).isNil());
  }
  FrameworkDouble framework;
  framework.hasStatusFactory = false;
  EXPECT_TRUE(ADMDMFSuppliesStatusServiceFactory::statusServiceForDMFServiceInfo(kDevice).isNil());
  EXPECT_THAT(framework.calls, ElementsAre("newStatusFactory"));
}

TEST(StatusServiceFactories, AskForTheInterfaceOfTheirProtocol) {
  FrameworkDouble framework;
  framework.status = stringOf("status");
  EXPECT_EQ(
      descriptionOf(ADMDMFDeviceStatusServiceFactory::statusServiceForDMFServiceInfo(kDevice)),
      "status");
  EXPECT_THAT(framework.calls,
              ElementsAre("newStatusFactory", "interfaceForProtocol:serviceInfo: ADMDeviceStatus"));
  EXPECT_TRUE(framework.serviceInfo.isIdenticalTo(kDevice));
  framework.calls.clear();
  framework.serviceInfo = Value();
  EXPECT_EQ(
      descriptionOf(ADMDMFSuppliesStatusServiceFactory::statusServiceForDMFServiceInfo(kDevice)),
      "status");
  EXPECT_THAT(framework.calls, ElementsAre("newStatusFactory",
                                           "interfaceForProtocol:serviceInfo: ADMSuppliesStatus"));
  EXPECT_TRUE(framework.serviceInfo.isIdenticalTo(kDevice));
  framework.status = Value();
  EXPECT_TRUE(ADMDMFSuppliesStatusServiceFactory::statusServiceForDMFServiceInfo(kDevice).isNil());
}

TEST(StatusServiceFactories, MakeAnAdapterOfTheCapabilities) {
  FrameworkDouble framework;
  framework.capabilities = stringOf("capabilities");
  const Value service =
      ADMCapabilitiesInfoProviderServiceFactory::statusServiceForDMFServiceInfo(kDevice);
  const auto* adapter = castTo<ADMCapabilitiesInfoProviderServiceAdapter>(service);
  ASSERT_NE(adapter, nullptr);
  EXPECT_EQ(descriptionOf(adapter->capabilitiesProvider()), "capabilities");
}

TEST(StatusServiceFactories, AreFoundByTheNamesOfTheirServices) {
  FrameworkDouble framework;
  framework.status = stringOf("status");
  const ClassRegistry::Registration registration =
      ClassRegistry::shared().add(statusServiceClasses());
  const Ref<ServiceInfoDouble> info = ServiceInfoDouble::create();
  const RefPtr<ADMDMFStatusServiceCreator> creator =
      ADMDMFStatusServiceCreator::initWithDMFServiceInfo(info);
  for (const char* name : {"DMFDeviceStatus", "DMFSuppliesStatus", "CapabilitiesInfoProvider"}) {
    EXPECT_FALSE(creator->statusServiceForName(String::create(name).get()).isNil()) << name;
    EXPECT_TRUE(framework.serviceInfo.isIdenticalTo(info)) << name;
  }
}

}  // namespace
}  // namespace commandfilter::testing
