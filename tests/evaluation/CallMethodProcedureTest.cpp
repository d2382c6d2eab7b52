// _CallMethod and the types of methods; calls of plain values are language cases.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "expression/Expressions.h"
#include "runtime/TestObjects.h"
#include "runtime/ValueVector.h"
#include "template/status/ADMStatusServiceProxy.h"
#include "template/status/doubles/OneServiceCreator.h"
#include "template/status/doubles/ServiceDouble.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kInvalidCall = "2: Invalid args in CallMethod procedure";

class CallMethod : public ::testing::Test {
 protected:
  CallMethod() {
    setTarget(greeterNamed("Anna"));
    context_->names["null"] = Value::null();
  }

  // @target is the object, @proxy a proxy for it.
  void setTarget(const Value& target) {
    context_->names["target"] = target;
    creator_ = OneServiceCreator::create(target);
    context_->names["proxy"] = ADMStatusServiceProxy::proxyForServiceCreator_serviceName(
        creator_.get(), String::create("Test").get());
  }
  // The result of the call with these arguments, which must be the same through the proxy; the
  // error instead when there is one.
  std::string resultOfCall(std::string_view call) {
    const std::string direct = resultOn("@target", call);
    EXPECT_EQ(resultOn("@proxy", call), direct) << call;
    return direct;
  }
  std::string resultOn(std::string_view target, std::string_view call) {
    context_->clearErrors();
    const std::string expression =
        "_CallMethod(" + std::string(target) + ", " + std::string(call) + ")";
    const std::string result = shown(evaluate(expression, context_));
    const std::string error = errorOf(*context_);
    if (error.empty()) return result;
    EXPECT_EQ(result, "nil") << call;
    return error;
  }
  // The same with @value as the argument.
  std::string resultWith(std::string_view method, Value value) {
    context_->names["value"] = std::move(value);
    return resultOfCall("\"" + std::string(method) + "\", @value");
  }

  Ref<TestContext> context_ = TestContext::create();
  RefPtr<OneServiceCreator> creator_;
};

TEST_F(CallMethod, PassesNumbersOfEveryType) {
  struct Row {
    std::string_view method;
    Value argument;
    std::string_view result;
  };
  const Row rows[] = {
      {"echoBoolean:", Value::boolean(true), "1c"},
      {"echoBoolean:", Number::integer(256), "0c"},
      {"echoSignedChar:", Number::integer(-5), "-5c"},
      {"echoSignedChar:", Number::integer(200), "-56c"},
      {"echoSignedChar:", Number::real(7.9), "7c"},
      {"echoUnsignedChar:", Number::integer(5), "5c"},
      {"echoUnsignedChar:", Number::integer(200), "-56c"},
      {"echoShort:", Number::integer(70000), "4464s"},
      {"echoUnsignedShort:", Number::integer(65535), "-1s"},
      {"echoInt:", Number::integer(std::int64_t{1} << 32U | 9), "9i"},
      {"echoUnsignedInt:", Number::integer(4294967295), "-1i"},
      {"echoLong:", Number::integer(std::int64_t{1} << 62U), "4611686018427387904q"},
      {"echoUnsignedLong:", Number::integer(UINT64_MAX), "-1q"},
      {"echoUnsignedLong:", Number::integer(-2), "-2q"},
      {"echoFloat:", Number::real(2.5), "2.5f"},
      {"echoFloat:", Number::real(0.1), "0.1000000014901161f"},
      {"echoFloat:", Number::integer(3), "3f"},
      {"echoDouble:", Number::real(0.1), "0.1d"},
      {"echoDouble:", Value::boolean(true), "1d"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(resultWith(row.method, row.argument), row.result)
        << row.method << " " << shown(row.argument);
  }
}

TEST_F(CallMethod, GivesMethodsTheBitsOfUnsignedNumbers) {
  ValueVector received;
  const Ref<ServiceDouble> service = ServiceDouble::create();
  const auto keep = [&received](const ServiceDouble::Arguments& arguments) {
    received.push_back(arguments[0]);
    return Value();
  };
  service->answer("byte:", "vC", keep);
  service->answer("wide:", "vQ", keep);
  setTarget(service);
  EXPECT_EQ(resultOn("@target", "\"byte:\", 200"), "nil");
  EXPECT_EQ(resultOn("@target", "\"wide:\", -1"), "nil");
  EXPECT_EQ(shown(Array::create(received)), "[-56c, -1q]");
}

TEST_F(CallMethod, ConvertsTextsThatKnowTheMethod) {
  EXPECT_EQ(resultWith("echoInt:", stringOf("12 pages")), "12i");
  EXPECT_EQ(resultWith("echoUnsignedInt:", stringOf("-1")), "-1i");
  EXPECT_EQ(resultWith("echoFloat:", stringOf("2.5")), "2.5f");
  EXPECT_EQ(resultWith("echoDouble:", stringOf("2.5")), "2.5d");
  for (const char* method : {"echoBoolean:", "echoSignedChar:", "echoUnsignedChar:", "echoShort:",
                             "echoUnsignedShort:", "echoLong:", "echoUnsignedLong:"}) {
    EXPECT_EQ(resultWith(method, stringOf("1")), kInvalidCall) << method;
  }
}

TEST_F(CallMethod, RefusesArgumentsThatDoNotKnowTheMethod) {
  for (const char* method : {"echoBoolean:", "echoSignedChar:", "echoUnsignedChar:", "echoShort:",
                             "echoUnsignedShort:", "echoInt:", "echoUnsignedInt:", "echoLong:",
                             "echoUnsignedLong:", "echoFloat:", "echoDouble:", "echoText:"}) {
    for (const Value& value : {Value(), Value::null(), arrayOf({}), greeterNamed("Berta")}) {
      EXPECT_EQ(resultWith(method, value), kInvalidCall) << method << " " << shown(value);
    }
  }
  EXPECT_EQ(resultWith("echoText:", Number::integer(5)), kInvalidCall);
}

TEST_F(CallMethod, PassesTexts) {
  EXPECT_EQ(resultWith("echoText:", stringOf("text")), R"("text")");
  EXPECT_EQ(resultWith("echoText:", stringOf("")), R"("")");
  // C ends a text at its first NUL.
  EXPECT_EQ(resultWith("echoText:", stringOf(std::string_view("a\0b", 3))), R"("a")");
  const Ref<ServiceDouble> spoken = ServiceDouble::create();
  spoken->answer("UTF8String", "*", [](const auto&) { return stringOf("spoken"); });
  EXPECT_EQ(resultWith("echoText:", spoken), R"("spoken")");
  EXPECT_EQ(resultWith("textIsNil:", spoken), "0q");
  spoken->answer("UTF8String", "*", [](const auto&) { return Value(); });
  EXPECT_EQ(resultWith("echoText:", spoken), "nil");
  EXPECT_EQ(resultWith("textIsNil:", spoken), "1q");
}

TEST_F(CallMethod, PassesObjectsAsTheyAre) {
  EXPECT_EQ(resultWith("echoValue:", stringOf("text")), R"("text")");
  EXPECT_EQ(resultWith("echoValue:", Number::integer(std::uint8_t{200})), "200C");
  EXPECT_EQ(resultWith("echoValue:", Value()), "nil");
  EXPECT_EQ(resultWith("echoValue:", arrayOf({Value::null()})), "[<null>]");
  EXPECT_EQ(resultWith("echoString:", stringOf("text")), R"("text")");
  EXPECT_EQ(resultWith("echoString:", Number::integer(5)), "nil");
}

TEST_F(CallMethod, AsksObjectsForTheNumber) {
  const Ref<ServiceDouble> number = ServiceDouble::create();
  number->answer("charValue", "i", [](const auto&) { return Number::integer(300); });
  EXPECT_EQ(resultWith("echoSignedChar:", number), "44c");
  EXPECT_EQ(resultWith("echoShort:", number), kInvalidCall);
  number->answer("shortValue", stringOf("no number"));
  EXPECT_EQ(resultWith("echoShort:", number), "0s");
}

TEST_F(CallMethod, GivesNilForAMethodWithoutResult) {
  const Value target = context_->names["target"];
  EXPECT_EQ(resultWith("keep:", stringOf("kept")), "nil");
  EXPECT_EQ(shown(castTo<Greeter>(target)->kept), R"("kept")");
}

TEST_F(CallMethod, PassesSeveralArguments) {
  EXPECT_EQ(resultOfCall(R"("first:second:third:", 1, "2", "3")"), R"([1q, 2i, "3"])");
  EXPECT_EQ(resultOfCall(R"("first:second:third:", @nil, 2, 3)"), "[<null>, 2i, <null>]");
  EXPECT_EQ(resultOfCall(R"("first:second:third:", 1, 2)"), kInvalidCall);
  EXPECT_EQ(resultOfCall(R"("first:second:third:", 1, 2, 3, 4)"), kInvalidCall);
}

TEST_F(CallMethod, EvaluatesNothingBehindAnArgumentThatDoesNotFit) {
  EXPECT_EQ(resultOn("@target",
                     "_Call(\"name\", \"first:second:third:\"), _Call(\"first\", 1), "
                     "_Call(\"second\", @nil), _Call(\"third\", 3)"),
            kInvalidCall);
  EXPECT_THAT(context_->calls, ElementsAre("name", "first", "second"));
}

TEST_F(CallMethod, RefusesTypesThatItDoesNotKnow) {
  const Ref<ServiceDouble> service = ServiceDouble::create();
  service->answer("odd:then:", "@:@", [](const auto&) { return stringOf("called"); });
  setTarget(service);
  EXPECT_EQ(resultOn("@target", "\"odd:then:\", _Call(\"odd\", 1), _Call(\"then\", 2)"),
            kInvalidCall);
  EXPECT_THAT(context_->calls, ElementsAre("odd"));
  EXPECT_THAT(service->calls(), IsEmpty());
}

TEST_F(CallMethod, GivesNilForAResultOfAnotherType) {
  const Ref<ServiceDouble> service = ServiceDouble::create();
  for (const char* type : {"v", "#", ":", "^"}) {
    service->answer("odd", type, [](const auto&) { return stringOf("result"); });
    setTarget(service);
    EXPECT_EQ(resultOn("@target", "\"odd\""), "nil") << type;
  }
}

TEST_F(CallMethod, ReadsAMissingResultAsZero) {
  const Ref<ServiceDouble> service = ServiceDouble::create();
  for (const auto& [type, expected] :
       {std::pair("c", "0c"), std::pair("C", "0c"), std::pair("s", "0s"), std::pair("S", "0s"),
        std::pair("i", "0i"), std::pair("I", "0i"), std::pair("q", "0q"), std::pair("Q", "0q"),
        std::pair("f", "0f"), std::pair("d", "0d"), std::pair("@", "nil"), std::pair("*", "nil")}) {
    service->answer("count", type, [](const auto&) { return Value(); });
    setTarget(service);
    EXPECT_EQ(resultOfCall("\"count\""), expected) << type;
  }
}

TEST_F(CallMethod, NeedsASignature) {
  // Claims to answer everything.
  class Boaster final : public Object {
   public:
    [[nodiscard]] bool respondsToSelector(const Selector& /*selector*/) const override {
      return true;
    }
  };
  setTarget(make<Boaster>());
  EXPECT_EQ(resultOn("@target", "\"anything\""), kInvalidCall);
  EXPECT_EQ(resultOn("@target", "\"anything:\", 1"), kInvalidCall);
}

TEST_F(CallMethod, NeedsATargetThatResponds) {
  // Has signatures for messages that it denies.
  class Denier final : public Object {
   public:
    [[nodiscard]] MethodSignature methodSignatureForSelector(
        const Selector& /*selector*/) const override {
      return MethodSignature("@");
    }
    void forwardInvocation(Invocation& invocation) override {
      invocation.setReturnValue(stringOf("answered"));
    }
  };
  setTarget(make<Denier>());
  EXPECT_EQ(resultOfCall("\"anything\""), kInvalidCall);
}

TEST_F(CallMethod, NeedsANameThatASelectorCanBeMadeOf) {
  context_->names["name"] = stringOf(std::string_view("name\0x", 6));
  EXPECT_EQ(resultOfCall("@name"), kInvalidCall);
  EXPECT_EQ(resultOfCall("\"name\""), R"("Anna")");
}

TEST_F(CallMethod, KeepsAnswersOfAProxy) {
  const Ref<ServiceDouble> service = ServiceDouble::create();
  service->answer("state", stringOf("ready"));
  service->answer("count", "i", [](const auto&) { return Number::integer(5); });
  setTarget(service);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(resultOn("@proxy", "\"state\""), R"("ready")");
    EXPECT_EQ(resultOn("@proxy", "\"count\""), "5i");
  }
  EXPECT_THAT(service->calls(), ElementsAre("state", "count", "count"));
}

TEST_F(CallMethod, FindsNothingOnAProxyWithoutAService) {
  setTarget(Value());
  EXPECT_EQ(resultOn("@proxy", "\"state\""), kInvalidCall);
  EXPECT_EQ(resultOn("@proxy", "\"realServiceObject\""), "nil");
}

}  // namespace
}  // namespace commandfilter::testing
