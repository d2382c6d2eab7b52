#include "template/status/ADMStatusServiceProxy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/KeyValueLookup.h"
#include "runtime/Send.h"
#include "runtime/TestValues.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMSuppliesStatus.h"
#include "template/status/doubles/OneServiceCreator.h"
#include "template/status/doubles/ServiceDouble.h"

namespace commandfilter::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

Ref<Array> pathOf(std::initializer_list<std::string_view> components) {
  std::vector<Value> strings;
  for (const std::string_view component : components) strings.push_back(stringOf(component));
  return Array::create(std::move(strings));
}

class StatusServiceProxy : public ::testing::Test {
 protected:
  static RefPtr<ADMStatusServiceProxy> proxyFor(ADMStatusServiceCreator* creator,
                                                std::string_view name = "Test") {
    return ADMStatusServiceProxy::proxyForServiceCreator_serviceName(
        creator, String::create(std::string(name)).get());
  }
  // The value at the path and what the proxy says about it: "value", or "nil: reason".
  std::string valueAt(const Array& path) {
    RefPtr<String> errorInfo = String::create("from before");
    const Value value = proxy_->valueForFeaturePathComponents_errorInfo(path, errorInfo);
    return shownValue(value, errorInfo.get());
  }
  std::string valueAt(std::initializer_list<std::string_view> path) {
    return valueAt(*pathOf(path));
  }
  // The same from the service itself.
  std::string serviceValueAt(const Array* path) {
    RefPtr<String> errorInfo;
    const Value value = proxy_->serviceValueForFeaturePathComponents_errorInfo(path, &errorInfo);
    return shownValue(value, errorInfo.get());
  }
  static std::string shownValue(const Value& value, const String* errorInfo) {
    std::string text = value.isNil() ? "nil" : descriptionOf(value);
    if (errorInfo != nullptr) text.append(": ").append(errorInfo->view());
    return text;
  }
  Value ask(std::string_view selector, std::initializer_list<Value> arguments = {}) {
    return send(proxy_, Selector(selector), arguments);
  }
  // What the cache holds under the key; "none" when nothing.
  std::string cached(std::string_view key) {
    const Value& value = creator_->cache->objectForKey(stringOf(key));
    return value.isNil() ? "none" : descriptionOf(value);
  }

  Ref<ServiceDouble> service_ = ServiceDouble::create();
  Ref<OneServiceCreator> creator_ = OneServiceCreator::create(service_);
  RefPtr<ADMStatusServiceProxy> proxy_ = proxyFor(creator_.get());
};

TEST_F(StatusServiceProxy, NeedsACreatorAndAName) {
  const Ref<String> name = String::create("Test");
  EXPECT_FALSE(ADMStatusServiceProxy::initWithServiceCreator_serviceName(nullptr, name.get()));
  EXPECT_FALSE(ADMStatusServiceProxy::initWithServiceCreator_serviceName(creator_.get(), nullptr));
  EXPECT_FALSE(ADMStatusServiceProxy::proxyForServiceCreator_serviceName(nullptr, name.get()));
  EXPECT_TRUE(proxyFor(creator_.get(), ""));
  EXPECT_EQ(proxy_->serviceName()->view(), "Test");
  EXPECT_EQ(proxy_->serviceCreator().get(), creator_.get());
}

TEST_F(StatusServiceProxy, AsksTheCreatorEachTime) {
  EXPECT_THAT(creator_->askedNames, IsEmpty());
  EXPECT_TRUE(proxy_->realServiceObject().isIdenticalTo(service_));
  creator_->service = stringOf("another service");
  EXPECT_EQ(descriptionOf(proxy_->realServiceObject()), "another service");
  EXPECT_EQ(proxy_->cache().get(), creator_->cache.get());
  creator_->reinitializeServices();
  EXPECT_EQ(proxy_->cache().get(), creator_->cache.get());
  EXPECT_THAT(creator_->askedNames, ElementsAre("Test", "Test"));
  EXPECT_THAT(creator_->cacheNames, ElementsAre("Test", "Test"));
}

TEST_F(StatusServiceProxy, AnswersAFeature) {
  service_->answer("valueForFeature:", stringOf("ready"));
  EXPECT_EQ(valueAt({"State"}), "ready");
  EXPECT_THAT(service_->calls(), ElementsAre("valueForFeature: State"));
}

TEST_F(StatusServiceProxy, AnswersAProperty) {
  service_->answer("valueForFeature:property:", stringOf("full"));
  EXPECT_EQ(valueAt({"Supply", "Level"}), "full");
  EXPECT_THAT(service_->calls(), ElementsAre("valueForFeature:property: Supply, Level"));
}

TEST_F(StatusServiceProxy, AnswersAPropertyForAnIdentifier) {
  service_->answer("valueForFeature:property:identifier:", stringOf("empty"));
  EXPECT_EQ(valueAt({"Supply", "Level", "Black"}), "empty");
  EXPECT_THAT(service_->calls(),
              ElementsAre("valueForFeature:property:identifier: Supply, Level, Black"));
}

TEST_F(StatusServiceProxy, RefusesPathsOfOtherLengths) {
  service_->answer("valueForFeature:", stringOf("ready"));
  EXPECT_EQ(serviceValueAt(nullptr), "nil: Path is empty");
  EXPECT_EQ(valueAt(std::initializer_list<std::string_view>{}), "nil: Path is empty");
  EXPECT_EQ(valueAt({"a", "b", "c", "d"}), "nil: Incorrect path");
  EXPECT_THAT(creator_->askedNames, IsEmpty());
}

TEST_F(StatusServiceProxy, SaysThatThereIsNoService) {
  creator_->service = Value();
  EXPECT_EQ(valueAt({"a"}), "nil: Empty service");
  EXPECT_EQ(valueAt({"a", "b", "c"}), "nil: Empty service");
}

TEST_F(StatusServiceProxy, AsksWhetherAFeatureIsSupported) {
  service_->answer("isSupportedFeature:", "c@", [](const ServiceDouble::Arguments& arguments) {
    return Value::boolean(descriptionOf(arguments[0]) == "State");
  });
  service_->answer("valueForFeature:", stringOf("ready"));
  service_->answer("valueForFeature:property:", stringOf("now"));
  EXPECT_EQ(valueAt({"State"}), "ready");
  EXPECT_EQ(valueAt({"Level"}), "nil: Feature is not supported");
  EXPECT_EQ(valueAt({"Level", "State"}), "nil: Feature is not supported");
  EXPECT_EQ(valueAt({"State", "Level"}), "now");
  EXPECT_THAT(service_->calls(),
              ElementsAre("isSupportedFeature: State", "valueForFeature: State",
                          "isSupportedFeature: Level", "isSupportedFeature: Level",
                          "isSupportedFeature: State", "valueForFeature:property: State, Level"));
}

TEST_F(StatusServiceProxy, AsksWhetherAPropertyIsSupported) {
  service_->answer("isSupportedProperty:forFeature:", "c@@",
                   [](const ServiceDouble::Arguments& arguments) {
                     return Value::boolean(descriptionOf(arguments[0]) == "Level");
                   });
  service_->answer("valueForFeature:", stringOf("supply"));
  service_->answer("valueForFeature:property:", stringOf("full"));
  service_->answer("valueForFeature:property:identifier:", stringOf("empty"));
  EXPECT_EQ(valueAt({"Supply"}), "supply");
  EXPECT_EQ(valueAt({"Supply", "Level"}), "full");
  EXPECT_EQ(valueAt({"Supply", "Level", "Black"}), "empty");
  // Without a reason.
  EXPECT_EQ(valueAt({"Supply", "State"}), "nil");
  EXPECT_EQ(valueAt({"Supply", "State", "Black"}), "nil");
  EXPECT_THAT(
      service_->calls(),
      ElementsAre("valueForFeature: Supply", "isSupportedProperty:forFeature: Level, Supply",
                  "valueForFeature:property: Supply, Level",
                  "isSupportedProperty:forFeature: Level, Supply",
                  "valueForFeature:property:identifier: Supply, Level, Black",
                  "isSupportedProperty:forFeature: State, Supply",
                  "isSupportedProperty:forFeature: State, Supply"));
}

TEST_F(StatusServiceProxy, TakesAnObjectAsYesAndNilAsNo) {
  service_->answer("valueForFeature:", stringOf("ready"));
  service_->answer("isSupportedFeature:", stringOf("NO"));
  EXPECT_EQ(valueAt({"a"}), "ready");
  service_->answer("isSupportedFeature:", Value());
  EXPECT_EQ(valueAt({"b"}), "nil: Feature is not supported");
  service_->answer("isSupportedFeature:", Number::integer(0));
  EXPECT_EQ(valueAt({"c"}), "nil: Feature is not supported");
}

TEST_F(StatusServiceProxy, SaysWhatAServiceDoesNotOffer) {
  EXPECT_EQ(valueAt({"a"}), "nil: Value for feature functionality is not supported");
  EXPECT_EQ(valueAt({"a", "b"}),
            "nil: Value for feature and property functionality is not supported");
  EXPECT_EQ(valueAt({"a", "b", "c"}),
            "nil: Value for feature, property and identifier functionality is not supported");
}

TEST_F(StatusServiceProxy, NeedsNoPlaceForTheReason) {
  EXPECT_TRUE(
      proxy_->serviceValueForFeaturePathComponents_errorInfo(pathOf({"a"}).get(), nullptr).isNil());
  EXPECT_TRUE(proxy_->serviceValueForFeaturePathComponents_errorInfo(nullptr, nullptr).isNil());
}

TEST_F(StatusServiceProxy, AsksForAPathOnce) {
  service_->answer("valueForFeature:property:", Number::integer(80));
  EXPECT_EQ(valueAt({"Supply", "Level"}), "80");
  EXPECT_EQ(cached("Supply#Level"), "80");
  EXPECT_EQ(valueAt({"Supply", "Level"}), "80");
  EXPECT_EQ(service_->calls().size(), 1U);
  // Another proxy for the name shares it, and the service itself does not.
  proxy_ = proxyFor(creator_.get());
  EXPECT_EQ(valueAt({"Supply", "Level"}), "80");
  EXPECT_EQ(service_->calls().size(), 1U);
  EXPECT_EQ(serviceValueAt(pathOf({"Supply", "Level"}).get()), "80");
  EXPECT_EQ(service_->calls().size(), 2U);
  creator_->reinitializeServices();
  EXPECT_EQ(valueAt({"Supply", "Level"}), "80");
  EXPECT_EQ(service_->calls().size(), 3U);
}

TEST_F(StatusServiceProxy, JoinsThePathForItsKey) {
  service_->answer("valueForFeature:", stringOf("one"));
  service_->answer("valueForFeature:property:", stringOf("two"));
  service_->answer("valueForFeature:property:identifier:", stringOf("three"));
  EXPECT_EQ(valueAt({"a"}), "one");
  EXPECT_EQ(valueAt({"a", "b"}), "two");
  EXPECT_EQ(valueAt({"a", "b", "c"}), "three");
  EXPECT_EQ(cached("a"), "one");
  EXPECT_EQ(cached("a#b"), "two");
  EXPECT_EQ(cached("a#b#c"), "three");
  EXPECT_EQ(valueAt({"a#b"}), "two");
  EXPECT_EQ(valueAt(*Array::create({Number::integer(1), Value::null()})), "two");
  EXPECT_EQ(cached("1#<null>"), "two");
}

TEST_F(StatusServiceProxy, GivesTheReasonOfAFailedPathOnce) {
  creator_->service = Value();
  EXPECT_EQ(valueAt({"a"}), "nil: Empty service");
  EXPECT_EQ(cached("a"), "<null>");
  creator_->service = service_;
  service_->answer("valueForFeature:", stringOf("ready"));
  EXPECT_EQ(valueAt({"a"}), "nil");
  EXPECT_EQ(valueAt({"b"}), "ready");
  creator_->reinitializeServices();
  EXPECT_EQ(valueAt({"a"}), "ready");
}

TEST_F(StatusServiceProxy, ReadsTheNullObjectAsNilFromTheCache) {
  service_->answer("valueForFeature:", Value::null());
  EXPECT_EQ(valueAt({"a"}), "<null>");
  EXPECT_EQ(valueAt({"a"}), "nil");
}

TEST_F(StatusServiceProxy, CachesNothingWhenTheServiceThrows) {
  service_->answer("valueForFeature:", "@@",
                   [](const auto&) -> Value { throw Exception("paper jam"); });
  service_->answer("state", "@", [](const auto&) -> Value { throw Exception("paper jam"); });
  EXPECT_EQ(reasonOf([this] { static_cast<void>(valueAt({"a"})); }), "paper jam");
  EXPECT_EQ(reasonOf([this] { static_cast<void>(ask("state")); }), "paper jam");
  EXPECT_EQ(creator_->cache->count(), 0U);
}

TEST_F(StatusServiceProxy, WorksWithACreatorWithoutCaches) {
  creator_->cache = nullptr;
  service_->answer("valueForFeature:", stringOf("ready"));
  service_->answer("state", stringOf("ready"));
  EXPECT_EQ(valueAt({"a"}), "ready");
  EXPECT_EQ(valueAt({"a"}), "ready");
  EXPECT_EQ(descriptionOf(ask("state")), "ready");
  EXPECT_EQ(service_->calls().size(), 3U);
}

// Paths that somebody keeps, as expressions do.
TEST_F(StatusServiceProxy, TellsKeptPathsApart) {
  service_->answer("valueForFeature:", "@@",
                   [](const ServiceDouble::Arguments& arguments) { return arguments[0]; });
  std::vector<Ref<Array>> paths;
  for (int i = 0; i < 100; ++i) paths.push_back(pathOf({std::to_string(i)}));
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 100; ++i) {
      const Ref<Array> kept = paths[static_cast<std::size_t>(i)];
      EXPECT_EQ(valueAt(*kept), std::to_string(i));
    }
  }
  EXPECT_EQ(service_->calls().size(), 100U);
}

TEST_F(StatusServiceProxy, MakesTheKeyOfAKeptPathOnce) {
  service_->answer("valueForFeature:", stringOf("ready"));
  const Ref<Array> path = pathOf({"a"});
  const Ref<Array> kept = path;
  static_cast<void>(valueAt(*path));
  // The proxy remembers the path.
  EXPECT_EQ(path->referenceCount(), 3U);
  static_cast<void>(valueAt(*path));
  EXPECT_EQ(path->referenceCount(), 3U);
  // One that nobody keeps is not remembered, and neither is one whose text may change.
  const Ref<Array> passing = pathOf({"b"});
  static_cast<void>(valueAt(*passing));
  EXPECT_EQ(passing->referenceCount(), 1U);
  const Ref<Array> ofObjects = Array::create({Value(service_)});
  const Ref<Array> alsoKept = ofObjects;
  static_cast<void>(valueAt(*ofObjects));
  EXPECT_EQ(ofObjects->referenceCount(), 2U);
}

// The key for a message of those types; "nil" when its answer is not kept.
std::string keyOf(const ADMStatusServiceProxy& proxy, std::string_view types,
                  std::string_view selector, std::initializer_list<Value> arguments = {}) {
  Invocation invocation{MethodSignature(types), Value(), Selector(selector)};
  std::size_t index = 2;
  for (const Value& argument : arguments) invocation.setArgumentAtIndex(argument, index++);
  const RefPtr<String> key = proxy.cacheKeyForInvocation(invocation);
  return key ? key->text() : "nil";
}

TEST_F(StatusServiceProxy, KeysMessagesBySelectorAndArgument) {
  const Value black = stringOf("K");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(keyOf(*proxy_, "@", "deviceState"), "@deviceState");
    EXPECT_EQ(keyOf(*proxy_, "@@", "supplyLevelForIdentifier:", {black}),
              "@supplyLevelForIdentifier:K");
    EXPECT_EQ(keyOf(*proxy_, "@@", "supplyNameForIdentifier:", {black}),
              "@supplyNameForIdentifier:K");
    EXPECT_EQ(keyOf(*proxy_, "@@", "supplyLevelForIdentifier:", {stringOf("C")}),
              "@supplyLevelForIdentifier:C");
    EXPECT_EQ(keyOf(*proxy_, "@@", "supplyLevelForIdentifier:", {Value()}),
              "@supplyLevelForIdentifier:");
    EXPECT_EQ(keyOf(*proxy_, "@@", "valueForFeature:", {Number::integer(5)}), "@valueForFeature:5");
    EXPECT_EQ(keyOf(*proxy_, "@@", "valueForFeature:", {Value::null()}), "@valueForFeature:<null>");
    EXPECT_EQ(keyOf(*proxy_, "@@", "valueForFeature:", {arrayOf({black})}),
              "@valueForFeature:(\n    K\n)");
  }
}

TEST_F(StatusServiceProxy, KeepsNoOtherAnswers) {
  EXPECT_EQ(keyOf(*proxy_, "c@", "isSupportedFeature:", {stringOf("a")}), "nil");
  EXPECT_EQ(keyOf(*proxy_, "@@@", "valueForFeature:property:", {stringOf("a"), stringOf("b")}),
            "nil");
  EXPECT_EQ(keyOf(*proxy_, "@i", "supplyAtIndex:", {Number::integer(1)}), "nil");
  for (const std::string_view type : {"c", "C", "s", "S", "i", "I", "q", "Q", "f", "d", "*", "v"}) {
    EXPECT_EQ(keyOf(*proxy_, type, "value"), "nil") << type;
  }
}

TEST_F(StatusServiceProxy, SendsMessagesOnAndKeepsTheirAnswers) {
  service_->answer("deviceState", stringOf("ready"));
  service_->answer("levelOf:", "@@", [](const ServiceDouble::Arguments& arguments) {
    return describe(arguments[0]);
  });
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(descriptionOf(ask("deviceState")), "ready");
    EXPECT_EQ(descriptionOf(ask("levelOf:", {stringOf("Black")})), "Black");
    EXPECT_EQ(descriptionOf(ask("levelOf:", {Value()})), "(null)");
    EXPECT_EQ(descriptionOf(ask("levelOf:", {Number::integer(5)})), "5");
  }
  EXPECT_THAT(service_->calls(),
              ElementsAre("deviceState", "levelOf: Black", "levelOf: (null)", "levelOf: 5"));
  EXPECT_EQ(cached("@deviceState"), "ready");
  EXPECT_EQ(cached("@levelOf:Black"), "Black");
  EXPECT_EQ(cached("@levelOf:"), "(null)");
}

TEST_F(StatusServiceProxy, KeepsThatAnAnswerWasNil) {
  service_->answer("deviceState", Value());
  EXPECT_TRUE(ask("deviceState").isNil());
  EXPECT_EQ(cached("@deviceState"), "<null>");
  EXPECT_TRUE(ask("deviceState").isNil());
  EXPECT_EQ(service_->calls().size(), 1U);
  service_->answer("warrantyValue", Value::null());
  EXPECT_TRUE(ask("warrantyValue").isNull());
  EXPECT_TRUE(ask("warrantyValue").isNil());
}

TEST_F(StatusServiceProxy, SendsOtherMessagesOnEachTime) {
  service_->answer("isAvailable", "c", [](const auto&) { return Value::boolean(true); });
  service_->answer("value:of:", stringOf("both"));
  service_->answer("setParameters:", "v@", [](const auto&) { return Value(); });
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(ask("isAvailable").number().boolValue());
    EXPECT_EQ(descriptionOf(ask("value:of:", {Number::integer(1), Number::integer(2)})), "both");
    EXPECT_TRUE(ask("setParameters:", {Value()}).isNil());
  }
  EXPECT_THAT(service_->calls(),
              ElementsAre("isAvailable", "value:of: 1, 2", "setParameters: (null)", "isAvailable",
                          "value:of: 1, 2", "setParameters: (null)"));
  EXPECT_EQ(creator_->cache->count(), 0U);
}

// The same through the way that contexts use.
TEST_F(StatusServiceProxy, AnswersAtOnce) {
  service_->answer("state", stringOf("ready"));
  service_->answer("nothing", Value());
  service_->answer("count", "i", [](const auto&) { return Number::integer(5); });
  service_->answer("levelOf:", "@@",
                   [](const ServiceDouble::Arguments& arguments) { return arguments[0]; });
  service_->answer("value:of:", "@@@", [](const ServiceDouble::Arguments& arguments) {
    return Array::create({arguments[0], arguments[1]});
  });
  const Value black = stringOf("Black");
  for (int i = 0; i < 2; ++i) {
    for (const auto& [message, expected] :
         {std::pair("state", "ready"), std::pair("nothing", "(null)"), std::pair("count", "5"),
          std::pair("levelOf:", "Black"), std::pair("value:of:", "(\n    Black,\n    <null>\n)")}) {
      Value answer = stringOf("from before");
      EXPECT_TRUE(proxy_->answerMessage(Selector(message), black, answer)) << message;
      EXPECT_EQ(descriptionOf(answer), expected);
    }
  }
  EXPECT_THAT(service_->calls(),
              ElementsAre("state", "nothing", "count", "levelOf: Black", "value:of: Black, (null)",
                          "count", "value:of: Black, (null)"));
  // Both ways share what is kept.
  EXPECT_EQ(descriptionOf(ask("state")), "ready");
  EXPECT_EQ(descriptionOf(ask("levelOf:", {black})), "Black");
  EXPECT_EQ(service_->calls().size(), 7U);
}

TEST_F(StatusServiceProxy, LeavesOtherMessagesToWhoeverAsks) {
  service_->answer("description", stringOf("the service"));
  Value answer = stringOf("from before");
  for (const char* message : {"unknown", "description", "isEqual:", "cache"}) {
    EXPECT_FALSE(proxy_->answerMessage(Selector(message), Value(), answer)) << message;
  }
  creator_->service = Value();
  EXPECT_FALSE(proxy_->answerMessage(Selector("state"), Value(), answer));
  EXPECT_EQ(descriptionOf(answer), "from before");
  EXPECT_THAT(service_->calls(), IsEmpty());
}

TEST_F(StatusServiceProxy, SendsEveryMessageOfTheStatusProtocolsOn) {
  std::vector<std::string> expected;
  for (const MethodGroup* group : {&ADMInterface::kMethods, &ADMStatus::kMethods,
                                   &ADMDeviceStatus::kMethods, &ADMSuppliesStatus::kMethods}) {
    for (const Method& row : group->methods) {
      service_->answer(row.selector, row.types,
                       [](const auto&) -> Value { return Number::integer(std::int8_t{1}); });
      const std::vector<Value> arguments(row.types.size() - 1);
      static_cast<void>(send(proxy_, Selector(row.selector), arguments));
      expected.emplace_back(row.selector);
    }
  }
  std::vector<std::string> called;
  for (const std::string& call : service_->calls())
    called.push_back(call.substr(0, call.find(' ')));
  EXPECT_EQ(called, expected);
  EXPECT_GT(expected.size(), 60U);
}

TEST_F(StatusServiceProxy, AnswersWhatEveryObjectAnswersItself) {
  service_->answer("description", stringOf("the service"));
  service_->answer("valueForKey:", stringOf("the service"));
  service_->answer("state", stringOf("ready"));
  EXPECT_NE(descriptionOf(ask("description")), "the service");
  EXPECT_TRUE(ask("isEqual:", {proxy_}).number().boolValue());
  EXPECT_FALSE(ask("isEqual:", {service_}).number().boolValue());
  EXPECT_TRUE(equal(proxy_, proxy_));
  EXPECT_EQ(reasonOf([this] { static_cast<void>(valueForKey(proxy_, *String::create("state"))); }),
            "ADMStatusServiceProxy has no value for key state");
  EXPECT_THAT(service_->calls(), IsEmpty());
  EXPECT_TRUE(ask("realServiceObject").isIdenticalTo(service_));
  EXPECT_TRUE(ask("cache").isIdenticalTo(creator_->cache));
}

TEST_F(StatusServiceProxy, RespondsToWhatTheServiceRespondsTo) {
  service_->answer("state", stringOf("ready"));
  service_->claim(ADMDeviceStatus::kProtocol);
  EXPECT_TRUE(respondsToSelector(proxy_, Selector("state")));
  EXPECT_FALSE(respondsToSelector(proxy_, Selector("other")));
  EXPECT_TRUE(respondsToSelector(proxy_, Selector("description")));
  EXPECT_TRUE(respondsToSelector(proxy_, Selector("cache")));
  EXPECT_TRUE(conformsToProtocol(proxy_, ADMDeviceStatus::kProtocol));
  EXPECT_TRUE(conformsToProtocol(proxy_, ADMInterface::kProtocol));
  EXPECT_FALSE(conformsToProtocol(proxy_, ADMSuppliesStatus::kProtocol));
  EXPECT_TRUE(conformsToProtocol(proxy_, ADMFeaturePathSource::kProtocol));
  EXPECT_EQ(methodSignatureForSelector(proxy_, Selector("state")).methodReturnType(), "@");
  EXPECT_FALSE(methodSignatureForSelector(proxy_, Selector("other")));
  EXPECT_TRUE(methodSignatureForSelector(proxy_, Selector("cache")));
}

TEST_F(StatusServiceProxy, PrefersTheServicesSignature) {
  service_->answer("cache", "i", [](const auto&) { return Number::integer(1); });
  EXPECT_EQ(methodSignatureForSelector(proxy_, Selector("cache")).methodReturnType(), "i");
}

TEST_F(StatusServiceProxy, RaisesForAMessageThatTheServiceLacks) {
  EXPECT_EQ(reasonOf([this] { static_cast<void>(ask("state")); }),
            "ADMStatusServiceProxy: unrecognized selector state");
  // Also with a signature from elsewhere.
  Invocation invocation(MethodSignature("@"), proxy_, Selector("state"));
  EXPECT_EQ(reasonOf([&] { proxy_->forwardInvocation(invocation); }),
            "ADMStatusServiceProxy: unrecognized selector state");
}

TEST_F(StatusServiceProxy, RespondsToNothingOfTheStatusWithoutAService) {
  creator_->service = Value();
  EXPECT_FALSE(respondsToSelector(proxy_, Selector("deviceState")));
  EXPECT_TRUE(respondsToSelector(proxy_, Selector("description")));
  EXPECT_FALSE(conformsToProtocol(proxy_, ADMInterface::kProtocol));
  EXPECT_FALSE(methodSignatureForSelector(proxy_, Selector("deviceState")));
  EXPECT_EQ(reasonOf([this] { static_cast<void>(ask("deviceState")); }),
            "ADMStatusServiceProxy: unrecognized selector deviceState");
}

TEST_F(StatusServiceProxy, AnswersZeroWithoutAService) {
  creator_->service = Value();
  for (const std::string_view type :
       {"c", "C", "s", "S", "i", "I", "q", "Q", "f", "d", "@", "*", "v"}) {
    Invocation invocation(MethodSignature(type), proxy_, Selector("value"));
    invocation.setReturnValue(stringOf("from before"));
    proxy_->forwardInvocation(invocation);
    const Value& value = invocation.returnValue();
    if (type == "@" || type == "*" || type == "v") {
      EXPECT_TRUE(value.isNil()) << type;
    } else {
      ASSERT_TRUE(value.isNumber()) << type;
      EXPECT_EQ(value.number().encoding(), type.front());
      EXPECT_FALSE(value.number().boolValue());
    }
  }
  EXPECT_EQ(creator_->cache->count(), 0U);
}

TEST_F(StatusServiceProxy, IsNoKeyOfADictionary) {
  DictionaryBuilder builder;
  EXPECT_EQ(reasonOf([&] { builder.set(Value(proxy_), Number::integer(1)); }),
            "ADMStatusServiceProxy: a service cannot be a key");
  EXPECT_EQ(builder.count(), 0U);
  EXPECT_TRUE(Dictionary::create()->objectForKey(Value(proxy_)).isNil());
}

}  // namespace
}  // namespace commandfilter::testing
