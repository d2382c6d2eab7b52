#include "template/ADMStatusValueRepresentation.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <utility>

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "runtime/Bundle.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Send.h"
#include "runtime/TestValues.h"
#include "template/LibraryClasses.h"
#include "template/ServiceCreatorDouble.h"
#include "template/status/ADMStatusServiceProxy.h"

namespace commandfilter::testing {
namespace {

using Entries = std::initializer_list<std::pair<Value, Value>>;

// A value with this description.
RefPtr<ADMStatusValueRepresentation> representationOf(Entries entries) {
  const Value info = dictionaryOf(entries);
  const auto creator = ServiceCreatorDouble::create();
  return ADMStatusValueRepresentation::
      initWithRepresentationInfo_statusServiceCreator_globalConfiguration(castTo<Dictionary>(info),
                                                                          creator.get(), nullptr);
}

TEST(Representation, NeedsAValue) {
  EXPECT_FALSE(representationOf({}));
  EXPECT_FALSE(representationOf({{stringOf("Range"), stringOf("_Array(1)")}}));
  EXPECT_FALSE(ADMStatusValueRepresentation::
                   initWithRepresentationInfo_statusServiceCreator_globalConfiguration(
                       nullptr, nullptr, nullptr));
}

TEST(Representation, CompilesEachExpressionOnce) {
  const auto value = representationOf(
      {{stringOf("Value"),
        dictionaryOf({{stringOf("a"), stringOf("1")}, {stringOf("b"), stringOf("1")}})},
       {stringOf("Range"), stringOf("_Array(1, 2)")}});
  ASSERT_TRUE(value);
  const auto before = value->processorForExpression(String::create("1").get());
  EXPECT_EQ(castTo<Array>(value->representationData())->count(), 2U);
  const auto after = value->processorForExpression(String::create("1").get());
  EXPECT_EQ(before.get(), after.get());
  const auto other = value->processorForExpression(String::create("2").get());
  EXPECT_NE(other.get(), after.get());
}

TEST(Representation, HasNoProcessorForNoExpression) {
  const auto value = representationOf({{stringOf("Value"), stringOf("1")}});
  EXPECT_FALSE(value->processorForExpression(nullptr));
  EXPECT_FALSE(value->processorForExpression(String::create("").get()));
}

TEST(Representation, CompilesABrokenExpressionOnce) {
  const auto value = representationOf({{stringOf("Value"), stringOf("(5")}});
  EXPECT_TRUE(value->representationData().isNil());
  EXPECT_EQ(descriptionOf(Value::sharing(value->lastError())), "Error 1: Incorrect brace balance");
  value->evaluationContext()->clearErrors();
  EXPECT_TRUE(value->representationData().isNil());
  EXPECT_EQ(value->lastError(), nullptr);
}

TEST(Representation, CompilesNothingBeforeItIsAsked) {
  const auto value = representationOf({{stringOf("Value"), stringOf("(5")},
                                       {stringOf("Filter"), stringOf("(6")},
                                       {stringOf("Range"), stringOf("(7")}});
  ASSERT_TRUE(value);
  EXPECT_EQ(value->lastError(), nullptr);
}

TEST(Representation, KeepsTheLastErrorWhenLaterComputationsSucceed) {
  const auto value = representationOf({{stringOf("Value"), stringOf("1")}});
  value->evaluationContext()->setRuntimeError("an old one");
  EXPECT_EQ(descriptionOf(value->representationData()), "1");
  value->resetEvaluations();
  EXPECT_EQ(descriptionOf(Value::sharing(value->lastError())), "Error 2: an old one");
}

TEST(Representation, EmptiesTheScratchStoreOfProcedures) {
  const auto value = representationOf({{stringOf("Value"), stringOf("1")}});
  auto* context = castTo<ADMEvaluationContextBase>(&value->evaluationContext()->object());
  context->commonCache().setObject_forKey(stringOf("kept"), stringOf("key"));
  static_cast<void>(value->representationData());
  EXPECT_EQ(context->commonCache().count(), 1U);
  value->resetEvaluations();
  EXPECT_EQ(context->commonCache().count(), 0U);
}

TEST(Representation, CalculatesWhatIsAnExpression) {
  const auto value = representationOf({{stringOf("Value"), stringOf("1")}});
  EXPECT_EQ(descriptionOf(value->calculateValue(stringOf("1 + 2"))), "12");
  EXPECT_TRUE(value->calculateValue(Value()).isNil());
  EXPECT_TRUE(value->calculateValue(Value::null()).isNil());
  EXPECT_TRUE(value->calculateValue(Number::integer(5)).isNil());
  EXPECT_TRUE(value->calculateValue(arrayOf({stringOf("1")})).isNil());
  EXPECT_TRUE(value->calculateValue(stringOf("")).isNil());
}

TEST(Representation, AsksTheServiceWhenItIsNeeded) {
  const Value info = dictionaryOf(
      {{stringOf("Value"), stringOf("@state")}, {stringOf("ServiceName"), stringOf("x")}});
  const auto creator = ServiceCreatorDouble::create();
  const auto value = ADMStatusValueRepresentation::
      initWithRepresentationInfo_statusServiceCreator_globalConfiguration(castTo<Dictionary>(info),
                                                                          creator.get(), nullptr);
  EXPECT_EQ(creator->asked, 0);
  EXPECT_TRUE(value->representationData().isNil());
  EXPECT_GT(creator->asked, 0);
}

TEST(Representation, IsMadeAndAskedByName) {
  const Value info = dictionaryOf({{stringOf("Value"), stringOf("5")}});
  const Value value =
      instantiate(ADMStatusValueRepresentation::kClass,
                  Selector("initWithRepresentationInfo:statusServiceCreator:globalConfiguration:"),
                  {info, ServiceCreatorDouble::create(), Value()});
  ASSERT_NE(castTo<ADMRepresentationProcessor>(value), nullptr);
  EXPECT_TRUE(conformsToProtocol(value, ADMRepresentationProcessor::kProtocol));
  send(value, Selector("resetEvaluations"));
  EXPECT_EQ(descriptionOf(send(value, Selector("representationData"))), "5");
  EXPECT_TRUE(send(value, Selector("lastError")).isNil());
  EXPECT_EQ(descriptionOf(send(value, Selector("calculateValue:"), {stringOf("6")})), "6");
  EXPECT_FALSE(send(value, Selector("processorForExpression:"), {stringOf("6")}).isNil());
}

TEST(Representation, DoesNotExhaustTheStackWithDeepDictionaries) {
  const Value deep = nestedDictionaries(200'000, stringOf("1"));
  const Value info = dictionaryOf({{stringOf("Value"), deep}});
  const auto value = ADMStatusValueRepresentation::
      initWithRepresentationInfo_statusServiceCreator_globalConfiguration(castTo<Dictionary>(info),
                                                                          nullptr, nullptr);
  EXPECT_EQ(reasonOf([&] { static_cast<void>(value->representationData()); }), "nested too deeply");
}

// The contexts of a plug-in, found by their names while its bundle is loaded.
class PlugInContexts : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(bundle_);
    ASSERT_TRUE(bundle_->load()) << bundle_->loadFailure();
  }
  void TearDown() override { bundle_->unload(); }

  RefPtr<Bundle> bundle_ =
      Bundle::bundleWithPath(std::string(TEMPLATE_BUNDLES) + "/TestContexts.bundle");
};

TEST_F(PlugInContexts, EvaluateSingleValues) {
  const auto value = representationOf({{stringOf("EvaluationContext"), stringOf("ShoutingContext")},
                                       {stringOf("Value"), stringOf("_Shout(@greeting)")}});
  ASSERT_TRUE(value);
  EXPECT_EQ(value->evaluationContext()->object().classInfo().name, "ShoutingContext");
  EXPECT_EQ(descriptionOf(value->representationData()), "hello!");
  EXPECT_EQ(value->lastError(), nullptr);
}

TEST_F(PlugInContexts, GetTheServiceAndTheConfiguration) {
  const auto creator = ServiceCreatorDouble::create();
  const Value configuration = dictionaryOf({{stringOf("Any"), stringOf("thing")}});
  const Value single = dictionaryOf({{stringOf("EvaluationContext"), stringOf("ShoutingContext")},
                                     {stringOf("ServiceName"), stringOf("Tray")},
                                     {stringOf("Value"), stringOf("1")}});
  const Value list = dictionaryOf({{stringOf("EvaluationContext"), stringOf("LastContext")},
                                   {stringOf("ServiceName"), stringOf("Tray")},
                                   {stringOf("Range"), stringOf("_Array(1)")},
                                   {stringOf("Value"), stringOf("1")}});
  for (const Value& info : {single, list}) {
    const auto value = ADMStatusValueRepresentation::
        initWithRepresentationInfo_statusServiceCreator_globalConfiguration(
            castTo<Dictionary>(info), creator.get(),
            RefPtr<Dictionary>(castTo<Dictionary>(configuration)));
    ASSERT_TRUE(value);
    const ADMEvaluationContext& context = *value->evaluationContext();
    const Value service = context.statusService();
    const auto* proxy = castTo<ADMStatusServiceProxy>(service);
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(proxy->serviceName()->view(), "Tray");
    EXPECT_EQ(proxy->serviceCreator().get(), creator.get());
    EXPECT_EQ(context.globalConfiguration(), configuration.object());
  }
}

TEST_F(PlugInContexts, RecordTheirErrors) {
  const auto value = representationOf({{stringOf("EvaluationContext"), stringOf("ShoutingContext")},
                                       {stringOf("Value"), stringOf("_Shout()")}});
  EXPECT_TRUE(value->representationData().isNil());
  EXPECT_EQ(descriptionOf(Value::sharing(value->lastError())), "Error 2: Nothing to shout");
}

TEST_F(PlugInContexts, EvaluateLists) {
  const auto value = representationOf({{stringOf("EvaluationContext"), stringOf("LastContext")},
                                       {stringOf("Range"), stringOf("_Array(5, 6)")},
                                       {stringOf("Value"), stringOf("@place")}});
  ASSERT_TRUE(value);
  EXPECT_EQ(descriptionOf(value->representationData()), "(\n    \"at 0\",\n    \"at 1\"\n)");
}

TEST_F(PlugInContexts, MustTakeTheInitialiserOfTheMode) {
  EXPECT_FALSE(representationOf({{stringOf("EvaluationContext"), stringOf("ShoutingContext")},
                                 {stringOf("Range"), stringOf("_Array(1)")},
                                 {stringOf("Value"), stringOf("1")}}));
  EXPECT_FALSE(representationOf({{stringOf("EvaluationContext"), stringOf("LastContext")},
                                 {stringOf("Value"), stringOf("1")}}));
}

TEST_F(PlugInContexts, MayRefuseOrBeNone) {
  for (const char* name : {"RefusingContext", "NoContext"}) {
    EXPECT_FALSE(representationOf(
        {{stringOf("EvaluationContext"), stringOf(name)}, {stringOf("Value"), stringOf("1")}}))
        << name;
  }
}

TEST_F(PlugInContexts, MayRaise) {
  EXPECT_EQ(reasonOf([] {
              static_cast<void>(
                  representationOf({{stringOf("EvaluationContext"), stringOf("ThrowingContext")},
                                    {stringOf("Value"), stringOf("1")}}));
            }),
            "no context today");
}

TEST(PlugInContext, OfABundleThatIsNotLoadedIsTheDefault) {
  const auto value = representationOf({{stringOf("EvaluationContext"), stringOf("ShoutingContext")},
                                       {stringOf("Value"), stringOf("1")}});
  ASSERT_TRUE(value);
  EXPECT_EQ(value->evaluationContext()->object().classInfo().name,
            "ADMSingleValueEvaluationContext");
}

// Does something when an error is recorded.
class StartledContext final : public ADMSingleValueEvaluationContext {
 public:
  static const Class kClass;

  static RefPtr<StartledContext> initWithStatusService_globalConfiguration(
      Value statusService, RefPtr<Dictionary> configuration) {
    return make<StartledContext>(std::move(statusService), std::move(configuration));
  }

  StartledContext(Value statusService, RefPtr<Dictionary> configuration)
      : ADMSingleValueEvaluationContext(std::move(statusService), std::move(configuration)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  void setLastError(RefPtr<ADMEvaluationError> error) override {
    ADMSingleValueEvaluationContext::setLastError(std::move(error));
    if (const auto act = std::exchange(onError, {})) act();
  }

  std::function<void()> onError;
};

constexpr std::array kStartledInitializers{
    initializer<&StartledContext::initWithStatusService_globalConfiguration>(
        "initWithStatusService:globalConfiguration:")};
constinit const Class StartledContext::kClass{.name = "StartledContext",
                                              .base = &ADMSingleValueEvaluationContext::kClass,
                                              .initializers = kStartledInitializers};
constexpr std::array<const Class*, 1> kStartledClasses{&StartledContext::kClass};

TEST(Representation, KeepsWhatItsContextHadCompiledMeanwhile) {
  const ClassRegistry::Registration registration = ClassRegistry::shared().add(kStartledClasses);
  const auto value = representationOf({{stringOf("EvaluationContext"), stringOf("StartledContext")},
                                       {stringOf("Value"), stringOf("1")}});
  ASSERT_TRUE(value);
  auto* context = castTo<StartledContext>(&value->evaluationContext()->object());
  ASSERT_NE(context, nullptr);
  RefPtr<ADMEvaluationProcessor> first;
  const auto again = [&] { return value->processorForExpression(String::create("(5").get()); };
  context->onError = [&] { first = again(); };
  const auto second = again();
  ASSERT_TRUE(first);
  EXPECT_EQ(second.get(), first.get());
  EXPECT_EQ(again().get(), first.get());
}

}  // namespace
}  // namespace commandfilter::testing
