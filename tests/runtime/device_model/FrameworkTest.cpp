// The framework's classes, looked up by name and called by their class methods.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Comparison.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMCapabilitiesInfoProvider.h"
#include "runtime/device_model/ADMCoreFactory.h"
#include "runtime/device_model/ADMDeviceIDInterpreter.h"
#include "runtime/device_model/ADMModelInfoManager.h"
#include "runtime/device_model/IDMDevice.h"

namespace commandfilter {
namespace {

using ::testing::ElementsAre;
using testing::stringOf;

std::vector<std::string>& calls() {
  static std::vector<std::string> noted;
  return noted;
}

class Info final : public Implements<Object, ADMServiceInfo> {
 public:
  static const Class kClass;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  void setDelegate(ADMServiceInfoDelegate* /*delegate*/) override {}
  void scheduleInRunLoop_forMode(RunLoop& /*runLoop*/, const String& /*mode*/) override {}
  void removeFromRunLoop_forMode(RunLoop& /*runLoop*/, const String& /*mode*/) override {}
  void resolveWithTimeout(double /*seconds*/) override {}
  std::int32_t serviceState() override { return 1; }
  RefPtr<String> uri() override { return String::create("uri"); }
  RefPtr<String> connectionType() override { return nullptr; }
  RefPtr<String> vendorName() override { return String::create("vendor"); }
  RefPtr<String> modelName() override { return String::create("model"); }
  RefPtr<Dictionary> connectionParams() override { return Dictionary::create(); }
  RefPtr<ADMModelInfo> modelInfo() override { return nullptr; }
};

class Provider final : public Implements<Object, ADMIOProvider> {
 public:
  static const Class kClass;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  const Class* implementorClassForProtocolWithName(const String* /*name*/) override {
    return nullptr;
  }
};

class Statuses final : public Implements<Object, ADMStatusFactory> {
 public:
  static const Class kClass;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value interfaceForProtocol_serviceInfo(const Protocol& /*protocol*/,
                                         const Value& /*serviceInfo*/) override {
    return {};
  }
};

class Manager final : public Implements<Object, ADMModelInfoManager> {
 public:
  static const Class kClass;
  static RefPtr<Manager> sharedManager() { return make<Manager>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool registerTable_location(const String* /*table*/, const String* /*location*/) override {
    return true;
  }
};

class Capabilities final : public Object {
 public:
  static const Class kClass;
  static RefPtr<Capabilities> initWithServiceInfo(const Value& serviceInfo) {
    if (serviceInfo.isNil()) return nullptr;
    return make<Capabilities>();
  }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};

Value newServiceInfo(const String* uri, const Value& second) {
  calls().push_back(std::string(textOf(uri)) + " " +
                    std::string(second.isObject() ? classOf(second)->name : "nil"));
  return make<Info>();
}
Value newStatusFactory() { return make<Statuses>(); }
// Not what was asked for.
Value newDeviceIDServiceFactory() { return String::create("x"); }

constexpr auto kInfoProtocols = conformances<Info, ADMServiceInfo>();
constexpr std::array<const MethodGroup*, 1> kInfoGroups{&ADMServiceInfo::kMethods};
constexpr auto kProviderProtocols = conformances<Provider, ADMIOProvider>();
constexpr auto kStatusesProtocols = conformances<Statuses, ADMStatusFactory>();
constexpr auto kManagerProtocols = conformances<Manager, ADMModelInfoManager>();
constexpr std::array kManagerMethods{classMethod<&Manager::sharedManager>("sharedManager")};
constexpr std::array kCapabilitiesInitializers{
    initializer<&Capabilities::initWithServiceInfo>("initWithServiceInfo:")};
constexpr std::array kCoreMethods{
    classMethod<&newServiceInfo>("newServiceInfoWithURI:ioProvider:"),
    classMethod<&newServiceInfo>("newServiceInfoWithURI:deviceClass:"),
    classMethod<&newStatusFactory>("newStatusFactory"),
    classMethod<&newDeviceIDServiceFactory>("newDeviceIDServiceFactory"),
};

constinit const Class Info::kClass{
    .name = "Info", .base = &Object::kClass, .protocols = kInfoProtocols, .groups = kInfoGroups};
constinit const Class Provider::kClass{
    .name = "Provider", .base = &Object::kClass, .protocols = kProviderProtocols};
constinit const Class Statuses::kClass{
    .name = "Statuses", .base = &Object::kClass, .protocols = kStatusesProtocols};
constinit const Class Manager::kClass{.name = "ADMModelInfoManager",
                                      .base = &Object::kClass,
                                      .protocols = kManagerProtocols,
                                      .classMethods = kManagerMethods};
constinit const Class Capabilities::kClass{.name = "ADMCapabilitiesInfoProvider",
                                           .base = &Object::kClass,
                                           .initializers = kCapabilitiesInitializers};
constinit const Class kCore{
    .name = "ADMCoreFactory", .base = &Object::kClass, .classMethods = kCoreMethods};
constinit const Class kBareCore{.name = "ADMCoreFactory", .base = &Object::kClass};
constinit const Class kBareManager{.name = "ADMModelInfoManager", .base = &Object::kClass};

constexpr std::array<const Class*, 3> kFramework{&kCore, &Manager::kClass, &Capabilities::kClass};
constexpr std::array<const Class*, 2> kBareFramework{&kBareCore, &kBareManager};

TEST(MissingFramework, HasNothing) {
  EXPECT_FALSE(ADMCoreFactory::find());
  EXPECT_EQ(ADMModelInfoManager::sharedManager(), nullptr);
  EXPECT_TRUE(ADMCapabilitiesInfoProvider::initWithServiceInfo(stringOf("x")).isNil());
  EXPECT_EQ(ADMDeviceIDInterpreter::initWithDeviceIDString(*String::create("x")), nullptr);
}

TEST(BareFramework, HasNothingToOffer) {
  const auto registration = ClassRegistry::shared().add(kBareFramework);
  const auto core = ADMCoreFactory::find();
  ASSERT_TRUE(core);
  const Ref<String> text = String::create("x");
  EXPECT_EQ(core->newServiceInfoWithURI_ioProvider(*text, *make<Provider>()), nullptr);
  EXPECT_EQ(core->newServiceInfoWithURI_deviceClass(*text, *text), nullptr);
  EXPECT_EQ(core->newStatusFactory(), nullptr);
  EXPECT_EQ(core->newDeviceIDServiceFactory(), nullptr);
  EXPECT_EQ(ADMModelInfoManager::sharedManager(), nullptr);
}

TEST(Framework, IsCalledByItsClassMethods) {
  const auto registration = ClassRegistry::shared().add(kFramework);
  calls().clear();
  const auto core = ADMCoreFactory::find();
  ASSERT_TRUE(core);
  const Ref<String> uri = String::create("uri");
  EXPECT_TRUE(core->newServiceInfoWithURI_ioProvider(*uri, *make<Provider>()));
  EXPECT_TRUE(core->newServiceInfoWithURI_deviceClass(
      *uri, *String::create(std::string(kPrinterDeviceClass))));
  EXPECT_THAT(calls(), ElementsAre("uri Provider", "uri String"));
  EXPECT_TRUE(core->newStatusFactory());
  EXPECT_EQ(core->newDeviceIDServiceFactory(), nullptr) << "an object of another kind";
  EXPECT_TRUE(ADMModelInfoManager::sharedManager());
  EXPECT_FALSE(ADMCapabilitiesInfoProvider::initWithServiceInfo(stringOf("x")).isNil());
  EXPECT_TRUE(ADMCapabilitiesInfoProvider::initWithServiceInfo(Value()).isNil());
}

TEST(ServiceInfo, AnswersByNameToo) {
  const Value info = make<Info>();
  EXPECT_TRUE(equal(send(info, Selector("serviceState")), Number::integer(1)));
  EXPECT_TRUE(equal(send(info, Selector("uri")), stringOf("uri")));
  EXPECT_TRUE(send(info, Selector("connectionType")).isNil());
  EXPECT_TRUE(equal(send(info, Selector("vendorName")), stringOf("vendor")));
  EXPECT_TRUE(equal(send(info, Selector("modelName")), stringOf("model")));
  EXPECT_TRUE(equal(send(info, Selector("connectionParams")), testing::dictionaryOf({})));
  EXPECT_TRUE(send(info, Selector("modelInfo")).isNil());
}

TEST(Device, IsMadeByItsInitialiserOnly) {
  const Ref<Dictionary> info = Dictionary::create();
  EXPECT_EQ(IDMDevice::initFromInfo_withHandler(Info::kClass, *info, Value()), nullptr);
}

}  // namespace
}  // namespace commandfilter
