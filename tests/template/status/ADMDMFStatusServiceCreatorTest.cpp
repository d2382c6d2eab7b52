#include "template/status/ADMDMFStatusServiceCreator.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Bundle.h"
#include "runtime/Cast.h"
#include "runtime/Class.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"
#include "runtime/TestValues.h"
#include "runtime/device_model/DeviceModelConstants.h"
#include "template/status/ADMStatusServiceProxy.h"
#include "template/status/doubles/ServiceDouble.h"
#include "template/status/doubles/ServiceInfoDouble.h"

namespace commandfilter::testing {
namespace {

// What the factories of the tests do.
struct FactoryScript {
  Value service;
  bool throws = false;
  int calls = 0;
  Value serviceInfo;
};
FactoryScript* script = nullptr;

Value statusServiceForDMFServiceInfo(const Value& serviceInfo) {
  ++script->calls;
  script->serviceInfo = serviceInfo;
  if (script->throws) throw Exception("the factory failed");
  return script->service;
}

constexpr std::array kFactoryMethods{
    classMethod<&statusServiceForDMFServiceInfo>("statusServiceForDMFServiceInfo:")};
constinit const Class kFactory{
    .name = "ADMTestServiceFactory", .base = &Object::kClass, .classMethods = kFactoryMethods};
// Inherits the class method.
constinit const Class kOtherFactory{.name = "ADMOtherServiceFactory", .base = &kFactory};
constinit const Class kNoFactory{.name = "ADMUnfitServiceFactory", .base = &Object::kClass};
constexpr std::array<const Class*, 3> kFactories{&kFactory, &kOtherFactory, &kNoFactory};

class StatusServiceCreator : public ::testing::Test {
 protected:
  StatusServiceCreator() { script = &script_; }
  ~StatusServiceCreator() override { script = nullptr; }

  static Ref<ADMDMFStatusServiceCreator> creatorFor(const Value& info) {
    return Ref<ADMDMFStatusServiceCreator>(
        *ADMDMFStatusServiceCreator::initWithDMFServiceInfo(info));
  }
  Value serviceNamed(std::string_view name) {
    return creator_->statusServiceForName(String::create(std::string(name)).get());
  }
  RefPtr<MutableDictionary> userInfoNamed(std::string_view name) {
    return creator_->userInfoForServiceName(String::create(std::string(name)).get());
  }

  FactoryScript script_{.service = stringOf("the service"), .serviceInfo = Value()};
  ClassRegistry::Registration registration_ = ClassRegistry::shared().add(kFactories);
  Ref<ServiceInfoDouble> info_ = ServiceInfoDouble::create();
  Ref<ADMDMFStatusServiceCreator> creator_ = creatorFor(info_);
};

TEST_F(StatusServiceCreator, NeedsAServiceInfo) {
  EXPECT_FALSE(ADMDMFStatusServiceCreator::initWithDMFServiceInfo(Value()));
}

TEST_F(StatusServiceCreator, ConformsToItsProtocol) {
  const Value creator = creator_;
  EXPECT_EQ(castTo<ADMStatusServiceCreator>(creator), creator_.get());
  EXPECT_TRUE(conformsToProtocol(creator, ADMStatusServiceCreator::kProtocol));
}

TEST_F(StatusServiceCreator, KeepsTheURIInAnyState) {
  for (const std::int32_t state : {0, 1, 2}) {
    const Ref<ServiceInfoDouble> info = ServiceInfoDouble::create(state);
    info->deviceURI = String::create("ipp://printer");
    EXPECT_EQ(textOf(creatorFor(info)->printerURI().get()), "ipp://printer");
  }
  EXPECT_FALSE(creator_->printerURI());
}

TEST_F(StatusServiceCreator, HasServicesForAResolvedDeviceOnly) {
  EXPECT_TRUE(creator_->servicesAvailable());
  EXPECT_TRUE(creator_->serviceInfo().isIdenticalTo(info_));
  for (const std::int32_t state : {-1, 0, 2, 257}) {
    creator_ = creatorFor(ServiceInfoDouble::create(state));
    EXPECT_FALSE(creator_->servicesAvailable()) << state;
    EXPECT_TRUE(creator_->serviceInfo().isNil());
    EXPECT_TRUE(serviceNamed("Test").isNil());
    EXPECT_EQ(creator_->statusServices().count(), 0U);
  }
  EXPECT_EQ(script_.calls, 0);
}

TEST_F(StatusServiceCreator, HasNoServicesForWhatIsNoServiceInfo) {
  creator_ = creatorFor(stringOf("a device"));
  EXPECT_FALSE(creator_->servicesAvailable());
  EXPECT_FALSE(creator_->printerURI());
}

TEST_F(StatusServiceCreator, MakesAServiceOnce) {
  EXPECT_TRUE(serviceNamed("Test").isIdenticalTo(script_.service));
  EXPECT_TRUE(script_.serviceInfo.isIdenticalTo(info_));
  script_.service = stringOf("another service");
  EXPECT_EQ(descriptionOf(serviceNamed("Test")), "the service");
  EXPECT_EQ(script_.calls, 1);
  EXPECT_EQ(descriptionOf(creator_->statusServices().objectForKey(stringOf("Test"))),
            "the service");
}

TEST_F(StatusServiceCreator, MakesOneServiceForEachName) {
  EXPECT_EQ(descriptionOf(serviceNamed("Test")), "the service");
  script_.service = stringOf("the other service");
  EXPECT_EQ(descriptionOf(serviceNamed("Other")), "the other service");
  EXPECT_EQ(creator_->statusServices().count(), 2U);
}

TEST_F(StatusServiceCreator, LooksNothingUpWithoutAName) {
  EXPECT_TRUE(creator_->statusServiceForName(nullptr).isNil());
  EXPECT_TRUE(serviceNamed("").isNil());
  EXPECT_EQ(creator_->statusServices().count(), 0U);
}

TEST_F(StatusServiceCreator, RemembersThatThereIsNoService) {
  for (const std::string_view name : {"Missing", "Unfit", "a b", "%@"}) {
    EXPECT_TRUE(serviceNamed(name).isNil());
    EXPECT_TRUE(creator_->statusServices().objectForKey(stringOf(name)).isNull()) << name;
  }
  script_.service = Value();
  EXPECT_TRUE(serviceNamed("Test").isNil());
  EXPECT_TRUE(creator_->statusServices().objectForKey(stringOf("Test")).isNull());
  script_.service = stringOf("too late");
  EXPECT_TRUE(serviceNamed("Test").isNil());
  EXPECT_EQ(script_.calls, 1);
}

TEST_F(StatusServiceCreator, GivesTheNullObjectOnce) {
  script_.service = Value::null();
  EXPECT_TRUE(serviceNamed("Test").isNull());
  EXPECT_TRUE(serviceNamed("Test").isNil());
  EXPECT_EQ(script_.calls, 1);
}

TEST_F(StatusServiceCreator, TriesAMissingServiceAgainAfterAReset) {
  registration_ = {};
  EXPECT_TRUE(serviceNamed("Test").isNil());
  registration_ = ClassRegistry::shared().add(kFactories);
  EXPECT_TRUE(serviceNamed("Test").isNil());
  creator_->reinitializeServices();
  EXPECT_EQ(descriptionOf(serviceNamed("Test")), "the service");
}

TEST_F(StatusServiceCreator, RemembersNothingOfAFactoryThatThrows) {
  script_.throws = true;
  EXPECT_EQ(reasonOf([this] { static_cast<void>(serviceNamed("Test")); }), "the factory failed");
  EXPECT_EQ(creator_->statusServices().count(), 0U);
  script_.throws = false;
  EXPECT_EQ(descriptionOf(serviceNamed("Test")), "the service");
}

TEST_F(StatusServiceCreator, KeepsACacheForEachName) {
  const RefPtr<MutableDictionary> cache = userInfoNamed("Test");
  ASSERT_TRUE(cache);
  EXPECT_EQ(cache->count(), 0U);
  cache->setObject_forKey(stringOf("value"), stringOf("key"));
  EXPECT_EQ(userInfoNamed("Test").get(), cache.get());
  EXPECT_NE(userInfoNamed("Other").get(), cache.get());
  EXPECT_TRUE(userInfoNamed(""));
  EXPECT_FALSE(creator_->userInfoForServiceName(nullptr));
  // It needs no service.
  EXPECT_EQ(creator_->statusServices().count(), 0U);
  EXPECT_TRUE(creatorFor(ServiceInfoDouble::create(0))
                  ->userInfoForServiceName(String::create("Test").get()));
}

TEST_F(StatusServiceCreator, ForgetsServicesAndCaches) {
  creator_->reinitializeServices();
  const RefPtr<MutableDictionary> cache = userInfoNamed("Test");
  EXPECT_EQ(descriptionOf(serviceNamed("Test")), "the service");
  creator_->reinitializeServices();
  EXPECT_EQ(creator_->statusServices().count(), 0U);
  EXPECT_NE(userInfoNamed("Test").get(), cache.get());
  EXPECT_EQ(descriptionOf(serviceNamed("Test")), "the service");
  EXPECT_EQ(script_.calls, 2);
}

// A proxy may hold a store for longer than it is the current one.
TEST_F(StatusServiceCreator, EmptiesTheStoresThatItForgets) {
  const RefPtr<MutableDictionary> store = userInfoNamed("Test");
  store->setObject_forKey(stringOf("answer"), stringOf("question"));
  creator_->reinitializeServices();
  EXPECT_EQ(store->count(), 0U);
}

// Asks the creator for stores when it goes.
class LastQuestion final : public Object {
 public:
  LastQuestion(ADMStatusServiceCreator& creator, std::string name)
      : creator_(&creator), name_(std::move(name)) {}
  ~LastQuestion() override {
    for (int i = 0; i < 20; ++i) {
      const RefPtr<MutableDictionary> store =
          creator_->userInfoForServiceName(String::create(name_ + std::to_string(i)).get());
      EXPECT_EQ(store->count(), 0U);
      store->setObject_forKey(stringOf("late"), stringOf("answer"));
    }
  }

 private:
  ADMStatusServiceCreator* creator_;
  std::string name_;
};

TEST_F(StatusServiceCreator, MayBeAskedByWhatGoes) {
  script_.service = make<LastQuestion>(*creator_, "service");
  static_cast<void>(serviceNamed("Test"));
  script_.service = Value();
  for (const std::string name : {"a", "b", "c"}) {
    userInfoNamed(name)->setObject_forKey(make<LastQuestion>(*creator_, name), stringOf("answer"));
  }
  creator_->reinitializeServices();
  EXPECT_EQ(creator_->statusServices().count(), 0U);
  for (const std::string_view name : {"a", "b", "c"}) EXPECT_EQ(userInfoNamed(name)->count(), 0U);
  creator_->reinitializeServices();
  EXPECT_EQ(userInfoNamed("a0")->count(), 0U);
}

TEST_F(StatusServiceCreator, SaysWhenSomethingIsNotCurrentAnyMore) {
  std::uint64_t before = creator_->generation();
  EXPECT_NE(before, 0U);
  static_cast<void>(serviceNamed("Test"));
  static_cast<void>(userInfoNamed("Test"));
  EXPECT_EQ(creator_->generation(), before);
  const auto hasChanged = [&] { return std::exchange(before, creator_->generation()) != before; };
  creator_->reinitializeServices();
  EXPECT_TRUE(hasChanged());
  creator_->setServiceInfo(info_);
  EXPECT_FALSE(hasChanged());
  creator_->setServiceInfo(ServiceInfoDouble::create());
  EXPECT_TRUE(hasChanged());
  static_cast<void>(serviceNamed("Test"));
  creator_->statusServices().setObject_forKey(stringOf("another"), stringOf("Test"));
  EXPECT_TRUE(hasChanged());
}

// The proxies for one name remember together what they were asked.
class SharedMemory : public StatusServiceCreator {
 protected:
  SharedMemory() {
    service_->answer("valueForFeature:", Number::integer(5));
    script_.service = service_;
  }
  RefPtr<ADMStatusServiceProxy> proxyFor(std::string_view name) {
    return ADMStatusServiceProxy::proxyForServiceCreator_serviceName(
        creator_.get(), String::create(std::string(name)).get());
  }
  std::string valueFor(std::string_view name) {
    RefPtr<String> reason;
    const Value value = proxyFor(name)->valueForFeaturePathComponents_errorInfo(*path_, reason);
    return value.isNil() ? "nil: " + std::string(textOf(reason.get())) : descriptionOf(value);
  }
  bool isKnown(std::string_view name) {
    return !proxyFor(name)->knownValueForFeaturePathComponents(*path_).isNil();
  }

  Ref<ServiceDouble> service_ = ServiceDouble::create();
  Ref<Array> path_ = Array::create({stringOf("Level")});
};

TEST_F(SharedMemory, IsOfAllProxiesForAName) {
  EXPECT_FALSE(isKnown("Test"));
  EXPECT_EQ(valueFor("Test"), "5");
  EXPECT_TRUE(isKnown("Test"));
  EXPECT_FALSE(isKnown("Other"));
  EXPECT_EQ(valueFor("Test"), "5");
  EXPECT_EQ(service_->calls().size(), 1U);
}

TEST_F(SharedMemory, EndsWithTheServices) {
  EXPECT_EQ(valueFor("Test"), "5");
  service_->answer("valueForFeature:", Number::integer(6));
  EXPECT_EQ(valueFor("Test"), "5");
  creator_->reinitializeServices();
  EXPECT_FALSE(isKnown("Test"));
  EXPECT_EQ(valueFor("Test"), "6");
  creator_->setServiceInfo(Value());
  EXPECT_FALSE(isKnown("Test"));
  EXPECT_EQ(valueFor("Test"), "nil: Empty service");
}

// What is answered before a reset is no answer after it.
TEST_F(SharedMemory, TakesNoAnswerFromBeforeAResetInIt) {
  int resets = 1;
  service_->answer("valueForFeature:", "@@", [&](const ServiceDouble::Arguments& /*arguments*/) {
    if (resets-- > 0) creator_->reinitializeServices();
    return Number::integer(resets);
  });
  EXPECT_EQ(valueFor("Test"), "0");
  EXPECT_FALSE(isKnown("Test"));
  EXPECT_EQ(valueFor("Test"), "-1");
  EXPECT_TRUE(isKnown("Test"));
}

TEST_F(SharedMemory, IsOfManyNamesButNotOfAny) {
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(valueFor("Name" + std::to_string(i)), "nil: Empty service");
  }
  EXPECT_TRUE(isKnown("Name0"));
  EXPECT_FALSE(isKnown("Name999"));
  // Names that nobody uses are forgotten with the services.
  creator_->reinitializeServices();
  EXPECT_EQ(valueFor("Name999"), "nil: Empty service");
  EXPECT_TRUE(isKnown("Name999"));
}

TEST_F(SharedMemory, KeepsNothingOfForgottenServices) {
  const Ref<Array> answer = Array::create({Number::integer(1)});
  service_->answer("levels", answer);
  service_->answer("valueForFeature:", answer);
  const auto inTest = answer->referenceCount();
  const auto ofService = service_->referenceCount();
  const RefPtr<ADMStatusServiceProxy> proxy = proxyFor("Test");
  for (int i = 0; i < 3; ++i) {
    Value value;
    EXPECT_TRUE(proxy->answerMessage(Selector("levels"), Value(), value));
    EXPECT_EQ(valueFor("Test"), descriptionOf(answer));
  }
  EXPECT_GT(answer->referenceCount(), inTest);
  EXPECT_GT(service_->referenceCount(), ofService);
  creator_->reinitializeServices();
  EXPECT_EQ(answer->referenceCount(), inTest);
  EXPECT_EQ(service_->referenceCount(), ofService);
}

TEST_F(StatusServiceCreator, TakesAnotherDevice) {
  info_->deviceURI = String::create("ipp://first");
  creator_ = creatorFor(info_);
  const RefPtr<MutableDictionary> cache = userInfoNamed("Test");
  EXPECT_EQ(descriptionOf(serviceNamed("Test")), "the service");
  creator_->setServiceInfo(info_);
  EXPECT_EQ(userInfoNamed("Test").get(), cache.get());
  EXPECT_EQ(creator_->statusServices().count(), 1U);

  // Its state is not looked at.
  const Ref<ServiceInfoDouble> other = ServiceInfoDouble::create(0);
  other->deviceURI = String::create("ipp://second");
  creator_->setServiceInfo(other);
  EXPECT_TRUE(creator_->servicesAvailable());
  EXPECT_EQ(creator_->statusServices().count(), 0U);
  EXPECT_NE(userInfoNamed("Test").get(), cache.get());
  EXPECT_EQ(descriptionOf(serviceNamed("Test")), "the service");
  EXPECT_TRUE(script_.serviceInfo.isIdenticalTo(other));
  EXPECT_EQ(textOf(creator_->printerURI().get()), "ipp://first");

  creator_->setServiceInfo(Value());
  EXPECT_FALSE(creator_->servicesAvailable());
  EXPECT_TRUE(serviceNamed("Test").isNil());
}

TEST_F(StatusServiceCreator, FindsFactoriesOfBundles) {
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(TEST_BUNDLES "/Services.bundle");
  ASSERT_TRUE(bundle);
  ASSERT_TRUE(bundle->load()) << bundle->loadFailure();
  EXPECT_TRUE(send(serviceNamed("Bundled"), Selector("device")).isIdenticalTo(info_));
  const RefPtr<ADMStatusServiceProxy> proxy =
      ADMStatusServiceProxy::proxyForServiceCreator_serviceName(creator_.get(),
                                                                String::create("Bundled").get());
  RefPtr<String> errorInfo;
  const Ref<Array> greeting = Array::create({stringOf("Greeting")});
  const Ref<Array> other = Array::create({stringOf("Farewell")});
  EXPECT_EQ(descriptionOf(proxy->valueForFeaturePathComponents_errorInfo(*greeting, errorInfo)),
            "hello");
  EXPECT_TRUE(proxy->valueForFeaturePathComponents_errorInfo(*other, errorInfo).isNil());
  EXPECT_EQ(textOf(errorInfo.get()), "Feature is not supported");
  // No object of a bundle may outlive its code.
  creator_->reinitializeServices();
  bundle->unload();
  EXPECT_TRUE(serviceNamed("Bundled").isNil());
}

class SocketURI : public StatusServiceCreator {
 protected:
  SocketURI() {
    info_->connection = String::create(std::string(kRendezvousConnectionType));
    info_->vendor = String::create("Acme Co");
    info_->model = String::create("M 1");
    setAddress(stringOf("10.0.0.5"));
  }

  void setAddress(const Value& address) {
    DictionaryBuilder parameters;
    parameters.set("Port", stringOf("9100"));
    parameters.set(kIPAddressParam, address);
    info_->parameters = parameters.build();
  }
  std::string uri() {
    const RefPtr<String> made = creator_->socketURIFromServiceInfo(info_);
    return made ? made->text() : "nil";
  }
};

TEST_F(SocketURI, NamesAddressVendorAndModel) {
  EXPECT_EQ(uri(), "socket://10.0.0.5?vendor=Acme%20Co&product=M%201");
}

TEST_F(SocketURI, IsOfRendezvousDevicesOnly) {
  for (const char* type : {"rendezvous", "Rendezvous ", "USB", ""}) {
    info_->connection = String::create(type);
    EXPECT_EQ(uri(), "nil") << type;
  }
  info_->connection = nullptr;
  EXPECT_EQ(uri(), "nil");
}

TEST_F(SocketURI, NeedsAllThreeParts) {
  info_->vendor = nullptr;
  EXPECT_EQ(uri(), "nil");
  info_->vendor = String::create("");
  EXPECT_EQ(uri(), "socket://10.0.0.5?vendor=&product=M%201");
  info_->model = nullptr;
  EXPECT_EQ(uri(), "nil");
  info_->model = String::create("M");
  info_->parameters = nullptr;
  EXPECT_EQ(uri(), "nil");
  info_->parameters = Dictionary::create();
  EXPECT_EQ(uri(), "nil");
}

TEST_F(SocketURI, IsNilForWhatIsNoServiceInfo) {
  EXPECT_FALSE(creator_->socketURIFromServiceInfo(Value()));
  EXPECT_FALSE(creator_->socketURIFromServiceInfo(stringOf("device")));
}

TEST_F(SocketURI, EscapesWhatNoURIMayHold) {
  info_->vendor = String::create("-_.!~*'();/?:@&=+$,");
  info_->model = String::create("aZ09");
  EXPECT_EQ(uri(), "socket://10.0.0.5?vendor=-_.!~*'();/?:@&=+$,&product=aZ09");
  info_->vendor = String::create(" \"#%<>[]\\^`{|}");
  info_->model = String::create("\x01\x7F\u00E9\U0001F600");
  EXPECT_EQ(uri(),
            "socket://10.0.0.5?vendor=%20%22%23%25%3C%3E%5B%5D%5C%5E%60%7B%7C%7D"
            "&product=%01%7F%C3%A9%F0%9F%98%80");
}

TEST_F(SocketURI, TakesAnyAddressAsText) {
  setAddress(Number::integer(5));
  EXPECT_EQ(uri(), "socket://5?vendor=Acme%20Co&product=M%201");
}

}  // namespace
}  // namespace commandfilter::testing
