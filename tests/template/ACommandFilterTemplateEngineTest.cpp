#include "template/ACommandFilterTemplateEngine.h"

#include <gtest/gtest.h>

#include "runtime/Cast.h"
#include "runtime/Send.h"
#include "runtime/TestValues.h"
#include "template/ServiceInfoDouble.h"

namespace commandfilter::testing {
namespace {

Value describedOverTest(std::string_view expression) {
  return dictionaryOf(
      {{stringOf("ServiceName"), stringOf("Test")}, {stringOf("Value"), stringOf(expression)}});
}

class TemplateEngine : public ::testing::Test {
 protected:
  static Ref<ACommandFilterTemplateEngine> engineFor(const Value& info, const Value& configuration,
                                                     const Value& input = Value()) {
    return ACommandFilterTemplateEngine::initWithServiceInfo_configurationTemplate_inputParameters(
        info, castTo<Dictionary>(configuration), castTo<Dictionary>(input));
  }
  static Value valueOf(ICommandFilterTemplateEngine& engine, std::string_view key) {
    return engine.templateValueForKey(String::create(std::string(key)).get());
  }
  static Value templateOf(std::initializer_list<std::pair<Value, Value>> values) {
    return dictionaryOf({{stringOf("TemplateValues"), dictionaryOf(values)}});
  }

  FrameworkDouble framework_;
  Value device_ = ServiceInfoDouble::create();
};

TEST_F(TemplateEngine, AsksTheDevice) {
  const auto engine =
      engineFor(device_, templateOf({{stringOf("State"), describedOverTest("@state")},
                                     {stringOf("Wrong"), describedOverTest("1 lt \"x\"")}}));
  EXPECT_EQ(descriptionOf(valueOf(*engine, "State")), "ready");
  EXPECT_TRUE(valueOf(*engine, "Nowhere").isNil());
  EXPECT_TRUE(engine->errorInfo().isNil());
  EXPECT_TRUE(valueOf(*engine, "Wrong").isNil());
  const Value report = engine->errorInfo();
  ASSERT_NE(castTo<Dictionary>(report), nullptr);
  EXPECT_FALSE(castTo<Dictionary>(report)->objectForKey("Wrong").isNil());
}

TEST_F(TemplateEngine, HandsTheInputParametersOn) {
  const auto engine =
      engineFor(device_, templateOf({{stringOf("Who"), describedOverTest("_InputValue(\"Who\")")}}),
                dictionaryOf({{stringOf("Who"), stringOf("me")}}));
  EXPECT_EQ(descriptionOf(valueOf(*engine, "Who")), "me");
}

TEST_F(TemplateEngine, AnswersNilWithoutADevice) {
  const auto engine = engineFor(Value(), templateOf({{stringOf("A"), describedOverTest("1")}}));
  EXPECT_EQ(engine->templateProcessor(), nullptr);
  EXPECT_TRUE(valueOf(*engine, "A").isNil());
  EXPECT_TRUE(engine->errorInfo().isNil());
}

TEST_F(TemplateEngine, AnswersNilWithoutATemplate) {
  const auto engine = engineFor(device_, Value());
  EXPECT_TRUE(valueOf(*engine, "A").isNil());
  EXPECT_TRUE(engine->errorInfo().isNil());
}

TEST_F(TemplateEngine, AnswersNilForADeviceThatIsNotReady) {
  const auto engine = engineFor(ServiceInfoDouble::create(kServiceStateResolved + 1),
                                templateOf({{stringOf("A"), describedOverTest("1")},
                                            {stringOf("Broken"), dictionaryOf({})}}));
  EXPECT_TRUE(valueOf(*engine, "A").isNil());
  EXPECT_TRUE(valueOf(*engine, "Broken").isNil());
  EXPECT_TRUE(engine->errorInfo().isNil());
}

TEST_F(TemplateEngine, TurnsAnExceptionIntoNil) {
  const auto engine =
      engineFor(device_, templateOf({{stringOf("Jam"), describedOverTest("@jam")},
                                     {stringOf("State"), describedOverTest("@state")}}));
  EXPECT_TRUE(valueOf(*engine, "Jam").isNil());
  EXPECT_TRUE(engine->errorInfo().isNil());
  EXPECT_TRUE(valueOf(*engine, "Jam").isNil());
  EXPECT_EQ(descriptionOf(valueOf(*engine, "State")), "ready");
}

TEST_F(TemplateEngine, TurnsAnExceptionOfTheDescriptionIntoNil) {
  const auto engine = engineFor(
      device_,
      templateOf({{stringOf("A"), dictionaryOf({{stringOf("Value"), stringOf("1")},
                                                {stringOf("Range"), Number::integer(5)}})}}));
  EXPECT_TRUE(valueOf(*engine, "A").isNil());
  EXPECT_TRUE(engine->errorInfo().isNil());
}

TEST_F(TemplateEngine, TurnsACircleIntoNil) {
  const auto engine =
      engineFor(device_, templateOf({{stringOf("Self"), describedOverTest("[Self]")}}));
  EXPECT_TRUE(valueOf(*engine, "Self").isNil());
  EXPECT_TRUE(valueOf(*engine, "Self").isNil());
}

TEST_F(TemplateEngine, LetsOtherThrownObjectsPass) {
  const auto engine =
      engineFor(device_, templateOf({{stringOf("A"), describedOverTest("@explode")}}));
  EXPECT_THROW(static_cast<void>(valueOf(*engine, "A")), int);
}

TEST_F(TemplateEngine, SharesNothingWithAnotherOne) {
  const Value configuration = templateOf({{stringOf("State"), describedOverTest("@state")}});
  const auto first = engineFor(device_, configuration);
  const auto second = engineFor(device_, configuration);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(descriptionOf(valueOf(*first, "State")), "ready");
    EXPECT_EQ(descriptionOf(valueOf(*second, "State")), "ready");
  }
  EXPECT_EQ(framework_.servicesMade, 2);
  EXPECT_EQ(framework_.calls.size(), 2U);
}

TEST_F(TemplateEngine, IsMadeAndAskedByName) {
  const Value engine =
      instantiate(ACommandFilterTemplateEngine::kClass,
                  Selector("initWithServiceInfo:configurationTemplate:inputParameters:"),
                  {device_, templateOf({{stringOf("A"), describedOverTest("1")}}), Value()});
  EXPECT_NE(castTo<ICommandFilterTemplateEngine>(engine), nullptr);
  EXPECT_TRUE(conformsToProtocol(engine, ICommandFilterTemplateEngine::kProtocol));
  EXPECT_EQ(descriptionOf(send(engine, Selector("templateValueForKey:"), {stringOf("A")})), "1");
  EXPECT_TRUE(send(engine, Selector("errorInfo")).isNil());
}

}  // namespace
}  // namespace commandfilter::testing
