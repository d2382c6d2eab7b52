// Messages to a proxy, which reach its service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/Comparison.h"
#include "runtime/Invocation.h"
#include "runtime/KeyValueLookup.h"
#include "runtime/ValueVector.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMSuppliesManagement.h"
#include "runtime/device_model/ADMSuppliesStatus.h"
#include "template/status/doubles/ProxyFixture.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using StatusServiceMessages = StatusServiceProxy;

// The key for a message of those types; "nil" when its answer is not kept.
std::string keyOf(const ADMStatusServiceProxy& proxy, std::string_view types,
                  std::string_view selector, std::initializer_list<Value> arguments = {}) {
  Invocation invocation{MethodSignature(types), Value(), Selector(selector)};
  std::size_t index = 2;
  for (const Value& argument : arguments) invocation.setArgumentAtIndex(argument, index++);
  const RefPtr<String> key = proxy.cacheKeyForInvocation(invocation);
  return key ? key->text() : "nil";
}

TEST_F(StatusServiceMessages, KeysMessagesBySelectorAndArgument) {
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

TEST_F(StatusServiceMessages, KeepsNoOtherAnswers) {
  EXPECT_EQ(keyOf(*proxy_, "c@", "isSupportedFeature:", {stringOf("a")}), "nil");
  EXPECT_EQ(keyOf(*proxy_, "@@@", "valueForFeature:property:", {stringOf("a"), stringOf("b")}),
            "nil");
  EXPECT_EQ(keyOf(*proxy_, "@i", "supplyAtIndex:", {Number::integer(1)}), "nil");
  for (const std::string_view type : {"c", "C", "s", "S", "i", "I", "q", "Q", "f", "d", "*", "v"}) {
    EXPECT_EQ(keyOf(*proxy_, type, "value"), "nil") << type;
  }
}

TEST_F(StatusServiceMessages, SendsMessagesOnAndKeepsTheirAnswers) {
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

TEST_F(StatusServiceMessages, KeepsThatAnAnswerWasNil) {
  service_->answer("deviceState", Value());
  EXPECT_TRUE(ask("deviceState").isNil());
  EXPECT_EQ(cached("@deviceState"), "<null>");
  EXPECT_TRUE(ask("deviceState").isNil());
  EXPECT_EQ(service_->calls().size(), 1U);
  service_->answer("warrantyValue", Value::null());
  EXPECT_TRUE(ask("warrantyValue").isNull());
  EXPECT_TRUE(ask("warrantyValue").isNil());
}

TEST_F(StatusServiceMessages, SendsOtherMessagesOnEachTime) {
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
TEST_F(StatusServiceMessages, AnswersAtOnce) {
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

TEST_F(StatusServiceMessages, FindsKeptAnswersWithoutAskingTheService) {
  service_->answer("levelOf:", stringOf("full"));
  const Value black = stringOf("Black");
  const Selector levelOf("levelOf:");
  Value answer;
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(proxy_->answerMessage(levelOf, black, answer));
  const int questions = service_->questions();
  EXPECT_TRUE(proxy_->answerMessage(levelOf, black, answer));
  EXPECT_EQ(descriptionOf(answer), "full");
  EXPECT_EQ(service_->questions(), questions);
}

TEST_F(StatusServiceMessages, AsksAnotherServiceAnew) {
  service_->answer("levelOf:", stringOf("full"));
  const Value black = stringOf("Black");
  const Selector levelOf("levelOf:");
  Value answer;
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(proxy_->answerMessage(levelOf, black, answer));
  const Ref<ServiceDouble> other = ServiceDouble::create();
  creator_->service = other;
  creator_->reinitializeServices();
  answer = nullptr;
  EXPECT_FALSE(proxy_->answerMessage(levelOf, black, answer));
  EXPECT_TRUE(answer.isNil());
  // It gives no object, so nothing is kept.
  other->answer("levelOf:", "i@", [](const auto&) { return Number::integer(5); });
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(proxy_->answerMessage(levelOf, black, answer));
  EXPECT_EQ(descriptionOf(answer), "5");
  EXPECT_EQ(other->calls().size(), 2U);
  EXPECT_EQ(creator_->cache->count(), 0U);
}

TEST_F(StatusServiceMessages, LeavesOtherMessagesToWhoeverAsks) {
  service_->answer("description", stringOf("the service"));
  service_->answer("cache", stringOf("the service"));
  Value answer = stringOf("from before");
  for (const char* message : {"unknown", "description", "isEqual:", "cache"}) {
    EXPECT_FALSE(proxy_->answerMessage(Selector(message), Value(), answer)) << message;
  }
  creator_->service = Value();
  EXPECT_FALSE(proxy_->answerMessage(Selector("state"), Value(), answer));
  EXPECT_EQ(descriptionOf(answer), "from before");
  EXPECT_THAT(service_->calls(), IsEmpty());
}

TEST_F(StatusServiceMessages, SendsEveryMessageOfTheStatusProtocolsOn) {
  std::vector<std::string> expected;
  for (const MethodGroup* group :
       {&ADMInterface::kMethods, &ADMStatus::kMethods, &ADMSuppliesManagement::kMethods,
        &ADMDeviceStatus::kMethods, &ADMSuppliesStatus::kMethods}) {
    for (const Method& row : group->methods) {
      service_->answer(row.selector, row.types,
                       [](const auto&) -> Value { return Number::integer(std::int8_t{1}); });
      const ValueVector arguments(row.types.size() - 1);
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

TEST_F(StatusServiceMessages, AnswersWhatEveryObjectAnswersItself) {
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

TEST_F(StatusServiceMessages, RespondsToWhatTheServiceRespondsTo) {
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

TEST_F(StatusServiceMessages, PrefersTheServicesSignature) {
  service_->answer("cache", "i", [](const auto&) { return Number::integer(1); });
  EXPECT_EQ(methodSignatureForSelector(proxy_, Selector("cache")).methodReturnType(), "i");
}

TEST_F(StatusServiceMessages, RaisesForAMessageThatTheServiceLacks) {
  EXPECT_EQ(reasonOf([this] { static_cast<void>(ask("state")); }),
            "ADMStatusServiceProxy: unrecognized selector state");
  // Also with a signature from elsewhere.
  Invocation invocation(MethodSignature("@"), proxy_, Selector("state"));
  EXPECT_EQ(reasonOf([&] { proxy_->forwardInvocation(invocation); }),
            "ADMStatusServiceProxy: unrecognized selector state");
}

TEST_F(StatusServiceMessages, RespondsToNothingOfTheStatusWithoutAService) {
  creator_->service = Value();
  EXPECT_FALSE(respondsToSelector(proxy_, Selector("deviceState")));
  EXPECT_TRUE(respondsToSelector(proxy_, Selector("description")));
  EXPECT_FALSE(conformsToProtocol(proxy_, ADMInterface::kProtocol));
  EXPECT_FALSE(methodSignatureForSelector(proxy_, Selector("deviceState")));
  EXPECT_EQ(reasonOf([this] { static_cast<void>(ask("deviceState")); }),
            "ADMStatusServiceProxy: unrecognized selector deviceState");
}

TEST_F(StatusServiceMessages, AnswersZeroWithoutAService) {
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

}  // namespace
}  // namespace commandfilter::testing
