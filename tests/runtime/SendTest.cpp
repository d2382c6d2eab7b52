#include "runtime/Send.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "TestObjects.h"
#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Invocation.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::Greeter;
using testing::greeterNamed;
using testing::LoudGreeter;
using testing::Proxy;
using testing::reasonOf;
using testing::runOnStackOf;
using testing::stringOf;

Value sendTo(const Value& receiver, std::string_view selector,
             std::initializer_list<Value> arguments = {}) {
  return send(receiver, Selector(selector), arguments);
}

TEST(Send, CallsMethods) {
  const Value greeter = greeterNamed("Anna");
  EXPECT_EQ(descriptionOf(sendTo(greeter, "greet:", {stringOf("Berta")})), "Anna greets Berta");
  EXPECT_EQ(sendTo(greeter, "lengthOfName").number().longValue(), 4);
  EXPECT_EQ(descriptionOf(sendTo(greeter, "name")), "Anna");
}

TEST(Send, CallsInheritedAndReplacedMethods) {
  const Value loud = make<LoudGreeter>("Anna");
  EXPECT_EQ(descriptionOf(sendTo(loud, "name")), "Anna!");
  EXPECT_EQ(sendTo(loud, "lengthOfName").number().longValue(), 4);
  EXPECT_EQ(descriptionOf(sendTo(loud, "shout")), "HELLO");
}

TEST(Send, AnswersNilForNil) {
  EXPECT_TRUE(sendTo(Value(), "greet:", {stringOf("x")}).isNil());
  EXPECT_TRUE(sendTo(Value(), "nothing").isNil());
  EXPECT_FALSE(respondsToSelector(Value(), Selector("description")));
  EXPECT_FALSE(conformsToProtocol(Value(), testing::INamed::kProtocol));
  EXPECT_FALSE(methodSignatureForSelector(Value(), Selector("description")));
}

TEST(Send, RaisesForUnrecognizedSelectors) {
  EXPECT_EQ(reasonOf([] { sendTo(greeterNamed("Anna"), "nothing:", {Value()}); }),
            "Greeter: unrecognized selector nothing:");
  EXPECT_EQ(reasonOf([] { sendTo(Number::integer(1), "nothing"); }),
            "Number: unrecognized selector nothing");
  EXPECT_EQ(reasonOf([] { sendTo(Value::null(), "count"); }), "Null: unrecognized selector count");
  EXPECT_EQ(reasonOf([] { sendTo(greeterNamed("Anna"), "initWithName:", {stringOf("B")}); }),
            "Greeter: unrecognized selector initWithName:");
}

TEST(Send, RaisesForAnotherNumberOfArguments) {
  const Value greeter = greeterNamed("Anna");
  EXPECT_EQ(reasonOf([&] { sendTo(greeter, "greet:"); }), "greet: was sent with 0 arguments");
  EXPECT_EQ(reasonOf([&] {
              sendTo(greeter, "greet:", {Value(), Value()});
            }),
            "greet: was sent with 2 arguments");
  EXPECT_EQ(reasonOf([&] { sendTo(greeter, "name", {Value()}); }),
            "name was sent with 1 arguments");
  const Value proxy = make<Proxy>(greeter);
  EXPECT_EQ(reasonOf([&] { sendTo(proxy, "greet:"); }), "greet: was sent with 0 arguments");
}

// A message, the type code of its result, what it is sent with and what comes back.
struct Echo {
  const char* selector;
  char code;
  Value argument;
  Value result;
};

TEST(Send, PassesEveryType) {
  const Value greeter = greeterNamed("Anna");
  const Value array = arrayOf({stringOf("x")});
  const std::vector<Echo> echoes{
      {"echoBoolean:", 'c', Value::boolean(true), Value::boolean(true)},
      {"echoBoolean:", 'c', Number::real(0.5), Value::boolean(true)},
      {"echoSignedChar:", 'c', Number::integer(200), Number::integer(-56)},
      {"echoUnsignedChar:", 'C', Number::integer(-1), Number::integer(255)},
      {"echoShort:", 's', Number::integer(40000), Number::integer(-25536)},
      {"echoUnsignedShort:", 'S', Number::integer(-1), Number::integer(65535)},
      {"echoInt:", 'i', Number::integer(std::int64_t{1} << 32U), Number::integer(0)},
      {"echoInt:", 'i', Number::real(-2.9), Number::integer(-2)},
      {"echoUnsignedInt:", 'I', Number::integer(-1), Number::integer(UINT32_MAX)},
      {"echoLong:", 'q', Number::real(1e300), Number::integer(INT64_MAX)},
      {"echoLong:", 'q', Number::integer(UINT64_MAX), Number::integer(-1)},
      {"echoUnsignedLong:", 'Q', Number::real(1e300), Number::integer(UINT64_MAX)},
      {"echoUnsignedLong:", 'Q', Number::integer(-1), Number::integer(UINT64_MAX)},
      {"echoFloat:", 'f', Number::real(0.1), Number::real(0.1F)},
      {"echoDouble:", 'd', Number::integer(3), Number::real(3.0)},
      {"echoDouble:", 'd', Number::real(0.1), Number::real(0.1)},
  };
  for (const Echo& echo : echoes) {
    const Value result = sendTo(greeter, echo.selector, {echo.argument});
    ASSERT_TRUE(result.isNumber()) << echo.selector;
    EXPECT_EQ(result.number().encoding(), echo.code) << echo.selector;
    EXPECT_TRUE(equal(result, echo.result)) << echo.selector << descriptionOf(result);
  }
  EXPECT_EQ(descriptionOf(sendTo(greeter, "echoText:", {stringOf("\u00E4")})), "\u00E4");
  for (const char* selector : {"echoValue:", "echoArray:", "echoObject:"}) {
    EXPECT_EQ(sendTo(greeter, selector, {array}).object(), array.object()) << selector;
  }
  const Value string = stringOf("x");
  EXPECT_EQ(sendTo(greeter, "echoString:", {string}).object(), string.object());
  EXPECT_EQ(sendTo(greeter, "echoNamed:", {greeter}).object(), greeter.object());
  EXPECT_EQ(array.object()->referenceCount(), 1U);
}

TEST(Send, PassesWhatIsNoObject) {
  const Value greeter = greeterNamed("Anna");
  EXPECT_TRUE(sendTo(greeter, "echoValue:", {Value::null()}).isNull());
  EXPECT_TRUE(sendTo(greeter, "echoValue:", {Value()}).isNil());
  EXPECT_TRUE(sendTo(greeter, "echoValue:", {Number::integer(5)}).isNumber());
}

TEST(Send, PassesNilAndOtherKindsAsZeroAndNil) {
  const Value greeter = greeterNamed("Anna");
  for (const Value& wrong : {Value(), Value::null(), stringOf("7"), arrayOf({})}) {
    for (const char* selector : {"echoBoolean:", "echoSignedChar:", "echoUnsignedChar:",
                                 "echoShort:", "echoUnsignedShort:", "echoInt:", "echoUnsignedInt:",
                                 "echoLong:", "echoUnsignedLong:", "echoFloat:", "echoDouble:"}) {
      EXPECT_TRUE(equal(sendTo(greeter, selector, {wrong}), Number::integer(0))) << selector;
    }
  }
  for (const Value& wrong :
       {Value(), Value::null(), Value(Number::integer(7)), testing::dictionaryOf({})}) {
    for (const char* selector : {"echoText:", "echoString:", "echoArray:", "echoNamed:"}) {
      EXPECT_TRUE(sendTo(greeter, selector, {wrong}).isNil()) << selector;
    }
    EXPECT_TRUE(sendTo(greeter, "textIsNil:", {wrong}).number().boolValue());
  }
  EXPECT_TRUE(sendTo(greeter, "echoNamed:", {stringOf("x")}).isNil());
  EXPECT_FALSE(sendTo(greeter, "textIsNil:", {stringOf("")}).number().boolValue());
  // The null object and numbers are no objects of C++.
  EXPECT_EQ(sendTo(greeter, "echoObject:", {Value::null()}).object(), greeter.object());
}

TEST(Send, AnswersNilForAMethodWithoutResult) {
  const Ref<Greeter> greeter = make<Greeter>("Anna");
  EXPECT_TRUE(sendTo(greeter, "keep:", {Number::integer(5)}).isNil());
  EXPECT_EQ(greeter->kept.number().longValue(), 5);
}

TEST(Send, PassesArgumentsInOrder) {
  const Value result =
      sendTo(greeterNamed("Anna"),
             "first:second:third:", {stringOf("a"), Number::integer(2), stringOf("c")});
  EXPECT_EQ(descriptionOf(result), "(\n    a,\n    2,\n    c\n)");
}

TEST(Send, PerformsWithTheArgumentsThatTheMethodTakes) {
  const Value greeter = greeterNamed("Anna");
  EXPECT_EQ(descriptionOf(performSelector(greeter, Selector("greet:"), stringOf("Berta"))),
            "Anna greets Berta");
  EXPECT_TRUE(performSelector(greeter, Selector("greet:")).isNil());
  EXPECT_EQ(descriptionOf(performSelector(greeter, Selector("name"), stringOf("unwanted"))),
            "Anna");
  EXPECT_EQ(descriptionOf(performSelector(greeter, Selector("first:second:third:"), stringOf("a"))),
            "(\n    a,\n    0,\n    <null>\n)");
  EXPECT_TRUE(performSelector(Value(), Selector("greet:"), stringOf("x")).isNil());
  EXPECT_FALSE(reasonOf([&] { performSelector(greeter, Selector("nothing")); }).empty());
  EXPECT_FALSE(reasonOf([&] { performSelector(greeter, Selector("nothing:"), Value()); }).empty());
}

TEST(Send, CallsClassMethods) {
  EXPECT_EQ(sendToClass(Greeter::kClass, Selector("countOf:and:"),
                        {Number::integer(2), Number::integer(3)})
                .number()
                .longValue(),
            5);
  EXPECT_EQ(descriptionOf(sendToClass(LoudGreeter::kClass, Selector("motto"))), "hello");
  EXPECT_EQ(reasonOf([] { sendToClass(Greeter::kClass, Selector("name")); }),
            "Greeter: unrecognized selector name");
  EXPECT_EQ(reasonOf([] { sendToClass(Greeter::kClass, Selector("motto"), {Value()}); }),
            "motto was sent with 1 arguments");
}

TEST(Send, MakesInstances) {
  const Selector initWithName("initWithName:");
  const Value greeter = instantiate(Greeter::kClass, initWithName, {stringOf("Anna")});
  ASSERT_NE(castTo<Greeter>(greeter), nullptr);
  EXPECT_EQ(castTo<Greeter>(greeter)->name(), "Anna");
  EXPECT_EQ(greeter.object()->referenceCount(), 1U);
  const Value copy = instantiate(Greeter::kClass, Selector("initWithGreeter:"), {greeter});
  EXPECT_EQ(castTo<Greeter>(copy)->name(), "Anna");
}

TEST(Send, MakesNoInstanceWhenTheInitializerRefusesOrIsMissing) {
  const Selector initWithName("initWithName:");
  EXPECT_TRUE(instantiate(Greeter::kClass, initWithName, {stringOf("")}).isNil());
  EXPECT_TRUE(instantiate(Greeter::kClass, initWithName, {Number::integer(5)}).isNil());
  EXPECT_TRUE(instantiate(Greeter::kClass, Selector("initWithGreeter:"), {stringOf("x")}).isNil());
  EXPECT_TRUE(instantiate(Greeter::kClass, Selector("init")).isNil());
  EXPECT_TRUE(instantiate(LoudGreeter::kClass, initWithName, {stringOf("Anna")}).isNil());
  EXPECT_EQ(reasonOf([&] { static_cast<void>(instantiate(Greeter::kClass, initWithName)); }),
            "initWithName: was sent with 0 arguments");
}

TEST(Send, KnowsWhatAReceiverAnswers) {
  const Value greeter = greeterNamed("Anna");
  EXPECT_TRUE(respondsToSelector(greeter, Selector("greet:")));
  EXPECT_FALSE(respondsToSelector(greeter, Selector("initWithName:")));
  EXPECT_TRUE(respondsToSelector(Number::integer(1), Selector("intValue")));
  EXPECT_FALSE(respondsToSelector(Number::integer(1), Selector("count")));
  EXPECT_TRUE(respondsToSelector(Value::null(), Selector("description")));
  EXPECT_TRUE(conformsToProtocol(greeter, testing::IGreeter::kProtocol));
  EXPECT_FALSE(conformsToProtocol(greeter, testing::IStranger::kProtocol));
  EXPECT_FALSE(conformsToProtocol(Number::integer(1), testing::INamed::kProtocol));
}

TEST(Send, KnowsTheSignatureOfAReceiversMethod) {
  const MethodSignature signature =
      methodSignatureForSelector(greeterNamed("Anna"), Selector("first:second:third:"));
  ASSERT_TRUE(signature);
  EXPECT_EQ(signature.numberOfArguments(), 5U);
  EXPECT_EQ(signature.methodReturnType(), "@");
  EXPECT_EQ(signature.argumentTypeAtIndex(3), "i");
  EXPECT_EQ(
      methodSignatureForSelector(Number::integer(1), Selector("floatValue")).methodReturnType(),
      "f");
  EXPECT_FALSE(methodSignatureForSelector(greeterNamed("Anna"), Selector("nothing")));
  EXPECT_FALSE(methodSignatureForSelector(Number::integer(1), Selector("nothing")));
}

TEST(Send, ForwardsWhatTheClassDoesNotAnswer) {
  const Ref<Proxy> proxy = make<Proxy>(greeterNamed("Anna"));
  EXPECT_EQ(descriptionOf(sendTo(proxy, "greet:", {stringOf("Berta")})), "Anna greets Berta");
  EXPECT_EQ(sendTo(proxy, "lengthOfName").number().longValue(), 4);
  EXPECT_TRUE(sendTo(proxy, "keep:", {Number::integer(1)}).isNil());
  EXPECT_EQ(proxy->forwarded(), (std::vector<std::string>{"greet:", "lengthOfName", "keep:"}));
  EXPECT_TRUE(respondsToSelector(proxy, Selector("greet:")));
  EXPECT_TRUE(conformsToProtocol(proxy, testing::INamed::kProtocol));
}

TEST(Send, DoesNotForwardWhatTheClassAnswersItself) {
  const Ref<Proxy> proxy = make<Proxy>(greeterNamed("Anna"));
  EXPECT_TRUE(descriptionOf(sendTo(proxy, "description")).starts_with("<Proxy: 0x"));
  EXPECT_TRUE(sendTo(proxy, "isEqual:", {proxy}).number().boolValue());
  EXPECT_TRUE(proxy->forwarded().empty());
}

TEST(Send, RaisesWhenAProxyKnowsNoSignature) {
  EXPECT_EQ(reasonOf([] { sendTo(make<Proxy>(greeterNamed("Anna")), "nothing"); }),
            "Proxy: unrecognized selector nothing");
  EXPECT_EQ(reasonOf([] { sendTo(make<Proxy>(Value()), "greet:", {Value()}); }),
            "Proxy: unrecognized selector greet:");
}

TEST(Send, ForwardsThroughProxiesOfProxies) {
  Value value = greeterNamed("Anna");
  for (int i = 0; i < 100; ++i) value = make<Proxy>(std::move(value));
  EXPECT_EQ(descriptionOf(sendTo(value, "name")), "Anna");
}

// Answers with a signature, so that every message to it comes back to it.
class Loop final : public Object {
 public:
  [[nodiscard]] MethodSignature methodSignatureForSelector(
      const Selector& /*selector*/) const override {
    return MethodSignature("@");
  }
  void forwardInvocation(Invocation& invocation) override;
};

void Loop::forwardInvocation(Invocation& invocation) {
  invocation.invokeWithTarget(Value::sharing(this));
}

TEST(Send, RaisesWhenForwardingNeverEnds) {
  const Value loop = make<Loop>();
  EXPECT_EQ(reasonOf([&] { sendTo(loop, "anything"); }), "nested too deeply");
  std::string reason;
  runOnStackOf(std::size_t{128} * 1024,
               [&] { reason = reasonOf([&] { sendTo(loop, "anything"); }); });
  EXPECT_EQ(reason, "nested too deeply");
}

}  // namespace
}  // namespace commandfilter
