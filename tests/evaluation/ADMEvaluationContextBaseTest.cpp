#include "evaluation/ADMEvaluationContextBase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/ADMEvaluationNumber.h"
#include "expression/Expressions.h"
#include "expression/TestService.h"
#include "runtime/Send.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;

Ref<ADMEvaluationContextBase> plainContext(Value service = Value(),
                                           RefPtr<Dictionary> configuration = nullptr) {
  return ADMEvaluationContextBase::initWithStatusService_globalConfiguration(
      std::move(service), std::move(configuration));
}

Value valueOf(ADMEvaluationContext& context, std::string_view name) {
  return context.processSelector(EvaluationName::ofSymbol(String::create(std::string(name))));
}

TEST(ContextBase, StartsWithoutAnything) {
  const Ref<ADMEvaluationContextBase> context = plainContext();
  EXPECT_EQ(context->lastError(), nullptr);
  EXPECT_EQ(context->globalConfiguration(), nullptr);
  EXPECT_TRUE(context->statusService().isNil());
  EXPECT_TRUE(context->defaultServiceSymbolValue().isNil());
}

TEST(ContextBase, KeepsServiceAndConfiguration) {
  const Value service = stringOf("service");
  const RefPtr<Dictionary> configuration = macrosOf({});
  const Ref<ADMEvaluationContextBase> context = plainContext(service, configuration);
  EXPECT_TRUE(context->statusService().isIdenticalTo(service));
  EXPECT_EQ(context->globalConfiguration(), configuration.get());
}

TEST(ContextBase, IsMadeByName) {
  const Value service = stringOf("service");
  for (const Class* info :
       {&ADMEvaluationContextBase::kClass, &ADMSingleValueEvaluationContext::kClass}) {
    const Value made = instantiate(*info, Selector("initWithStatusService:globalConfiguration:"),
                                   {service, Value()});
    auto* context = castTo<ADMEvaluationContext>(made);
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(&castTo<Object>(made)->classInfo(), info);
    EXPECT_TRUE(context->statusService().isIdenticalTo(service));
  }
}

TEST(ContextBase, KeepsTheLastError) {
  const Ref<ADMEvaluationContextBase> context = plainContext();
  context->setRuntimeError("first");
  context->setRuntimeError("second %d %@", 2, stringOf("more"));
  EXPECT_EQ(errorOf(*context), "2: second 2 more");
  EXPECT_EQ(context->recordedError(), context->lastError());
  context->clearErrors();
  EXPECT_EQ(context->lastError(), nullptr);
  context->setRuntimeError("third");
  context->setLastError(nullptr);
  EXPECT_EQ(context->lastError(), nullptr);
}

TEST(ContextBase, HasATextForAMissingFormat) {
  const Ref<ADMEvaluationContextBase> context = plainContext();
  context->setRuntimeError(std::string_view());
  EXPECT_EQ(errorOf(*context), "2: Unknown error");
  context->setRuntimeError("");
  EXPECT_EQ(errorOf(*context), "2: ");
}

TEST(ContextBase, TakesAnyMessageAsAFormat) {
  const Ref<ADMEvaluationContextBase> context = plainContext();
  context->setRuntimeError("100% of %@ and %d, %s");
  EXPECT_EQ(errorOf(*context), "2: 100% of %@ and %d, %s");
}

TEST(ContextBase, EmptiesItsCacheWhenEvaluationsAreReset) {
  const Ref<ADMEvaluationContextBase> context = plainContext();
  context->resetEvaluations();
  MutableDictionary& cache = context->commonCache();
  EXPECT_EQ(cache.count(), 0U);
  cache.setObject_forKey(numberOf(1), stringOf("key"));
  EXPECT_EQ(&context->commonCache(), &cache);
  EXPECT_EQ(context->commonCache().count(), 1U);
  context->resetEvaluations();
  EXPECT_EQ(&context->commonCache(), &cache);
  EXPECT_EQ(cache.count(), 0U);
}

TEST(ContextBase, AnswersItsNames) {
  const Ref<ADMEvaluationContextBase> without = plainContext();
  EXPECT_EQ(shown(valueOf(*without, "true")), "1c");
  EXPECT_EQ(shown(valueOf(*without, "false")), "0c");
  EXPECT_EQ(shown(valueOf(*without, "nil")), "nil");
  EXPECT_EQ(shown(valueOf(*without, "service")), "nil");
  EXPECT_EQ(shown(valueOf(*without, "state")), "nil");
  EXPECT_TRUE(without->processSelector(EvaluationName::ofSymbol(nullptr)).isNil());
  EXPECT_EQ(without->lastError(), nullptr);
  EXPECT_TRUE(
      without->serviceSymbolForNameImpl(EvaluationName::ofSymbol(String::create("nil"))).isNull());
  const Value service = TestService::create();
  EXPECT_TRUE(valueOf(*plainContext(service), "service").isIdenticalTo(service));
  EXPECT_EQ(shown(valueOf(*plainContext(service), "state")), "nil");
}

TEST(ContextBase, ReportsANameThatNoSelectorCanBeMadeOf) {
  const Ref<ADMEvaluationContextBase> context = plainContext();
  const EvaluationName name = EvaluationName::ofSymbol(String::create(std::string("a\0b", 3)));
  EXPECT_TRUE(context->processSelector(name).isNil());
  EXPECT_EQ(errorOf(*context), std::string("2: No such selector:a\0b", 23));
}

TEST(ContextBase, ReportsAProcedureWithoutAName) {
  const Ref<ADMEvaluationContextBase> context = plainContext();
  EXPECT_TRUE(context->executeProcedure_withArguments(EvaluationName::ofProcedure(nullptr), nullptr)
                  .isNil());
  EXPECT_EQ(errorOf(*context), "2: Empty procedure name");
  EXPECT_EQ(shown(evaluate("_(1)", context)), "nil");
  EXPECT_EQ(errorOf(*context), "2: Can not find procedure ");
}

TEST(ContextBase, GivesNoValueForAnEmptyPath) {
  const Ref<ADMEvaluationContextBase> context = plainContext(TestService::create());
  EXPECT_TRUE(context->valueForFeaturePathComponents(nullptr).isNil());
  EXPECT_TRUE(context->valueForFeaturePathComponents(Array::create().get()).isNil());
  EXPECT_EQ(context->lastError(), nullptr);
}

TEST(ContextBase, LeavesOutWhatStandsForNothing) {
  const Ref<ADMEvaluationContextBase> context = plainContext(TestService::create());
  const Ref<Array> path = Array::create({stringOf("@"), stringOf("a"), stringOf(""), numberOf(1)});
  EXPECT_EQ(shown(context->valueForFeaturePathComponents(path.get())), R"(["a", 1q])");
  EXPECT_EQ(shown(path), R"(["@", "a", "", 1q])");
  EXPECT_EQ(shown(evaluate("{@}", context)), "[]");
}

TEST(ContextBase, ReportsTheServicesReasonAsItIs) {
  const Ref<ADMEvaluationContextBase> context = plainContext(TestService::create());
  EXPECT_EQ(shown(evaluate("{a}.worse", context)), "nil");
  EXPECT_EQ(errorOf(*context), "2: no such %path");
  EXPECT_EQ(shown(evaluate("{a}.worse", plainContext())), "nil");
}

TEST(ContextBase, RaisesForAServiceThatHasNoPaths) {
  const Ref<ADMEvaluationContextBase> context = plainContext(stringOf("service"));
  EXPECT_EQ(reasonOf([&context] { static_cast<void>(evaluate("{a}", context)); }),
            "the status service: unrecognized selector "
            "valueForFeaturePathComponents:errorInfo:");
}

TEST(ContextBase, RaisesForAMacroThatIsNoText) {
  DictionaryBuilder macros;
  macros.set("Number", numberOf(1));
  DictionaryBuilder configuration;
  configuration.set("TemplateMacroses", macros.build());
  const Ref<ADMEvaluationContextBase> context = plainContext(Value(), configuration.build());
  EXPECT_EQ(reasonOf([&context] { static_cast<void>(evaluate("_Number()", context)); }),
            "a macro is no text: Number");
}

// A context of its own that knows a name and a procedure more, as a plug-in adds them.
class ExtendedContext final : public ADMSingleValueEvaluationContext {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ExtendedContext> create(RefPtr<Dictionary> configuration = nullptr) {
    return make<ExtendedContext>(TestService::create(), std::move(configuration));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value serviceSymbolForNameImpl(const EvaluationName& name) override {
    if (name.text() == "answer") return numberOf(42);
    if (name.text() == "state") return Value::null();
    return ADMSingleValueEvaluationContext::serviceSymbolForNameImpl(name);
  }
  Value defaultServiceSymbolValue() override { return stringOf("current"); }
  Value executeCountProcedure(const Array* items) {
    return numberOf(items != nullptr ? static_cast<std::int64_t>(items->count()) : -1);
  }
  // In place of the built-in one.
  Value executeGetSizeProcedure(const Array* /*items*/) { return stringOf("my size"); }

  using ADMSingleValueEvaluationContext::ADMSingleValueEvaluationContext;
  ~ExtendedContext() override = default;
};
constexpr std::array kExtendedMethods{
    method<&ExtendedContext::executeCountProcedure>("executeCountProcedure:"),
    method<&ExtendedContext::executeGetSizeProcedure>("executeGetSizeProcedure:"),
};
constinit const Class ExtendedContext::kClass{.name = "ExtendedContext",
                                              .base = &ADMSingleValueEvaluationContext::kClass,
                                              .methods = kExtendedMethods};

TEST(DerivedContext, AddsASymbol) {
  const Ref<ExtendedContext> context = ExtendedContext::create();
  EXPECT_EQ(shown(evaluate("@answer", context)), "42q");
  EXPECT_EQ(shown(evaluate("@true", context)), "1c");
  // A known name without a value: the service, which has one, is not asked.
  EXPECT_EQ(shown(evaluate("@state", context)), "nil");
  EXPECT_EQ(shown(evaluate("{@}.b", context)), R"(["current", "b"])");
}

TEST(DerivedContext, AddsAndReplacesProcedures) {
  const Ref<ExtendedContext> context =
      ExtendedContext::create(macrosOf({{"Count", R"("macro")"}, {"GetSize", R"("macro")"}}));
  EXPECT_EQ(shown(evaluate("_Count(1, 2)", context)), "2q");
  EXPECT_EQ(shown(evaluate("_Count()", context)), "-1q");
  EXPECT_EQ(shown(evaluate("_GetSize(1)", context)), R"("my size")");
  EXPECT_EQ(shown(evaluate("_GetSize(_Array(1))", plainContext())), "1Q");
  EXPECT_EQ(shown(evaluate("_count(1)", context)), "nil");
  EXPECT_EQ(errorOf(*context), "2: Can not find procedure count");
}

TEST(DerivedContext, IsTheContextOfTheProcedures) {
  const Ref<TestContext> context = TestContext::create();
  EXPECT_EQ(shown(evaluate(R"(_Filter(_Array(1, 2), _Call("in an aggregation", 1)))", context)),
            "[]");
  EXPECT_TRUE(context->calls.empty());
  EXPECT_EQ(shown(evaluate(R"(_Array(_Call("a", 1), _Call("b", 2)))", context)), "[1q, 2q]");
  EXPECT_THAT(context->calls, ElementsAre("a", "b"));
}

TEST(SingleValueContext, AsksTheService) {
  const Ref<ADMSingleValueEvaluationContext> context =
      ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(
          TestService::create(), nullptr);
  EXPECT_EQ(shown(evaluate("@state", context)), R"("ready")");
  EXPECT_EQ(shown(evaluate("@levelOf:", context)), "\"level of (null)\"");
  EXPECT_EQ(shown(evaluate("@unknown", context)), "nil");
  EXPECT_EQ(context->lastError(), nullptr);
}

TEST(ContextBase, SharesWhatWasFoundInTheConfiguration) {
  const RefPtr<Dictionary> configuration = macrosOf({{"Broken", "(5"}});
  const auto errorIn = [](const Ref<ADMEvaluationContextBase>& context) {
    static_cast<void>(evaluate("_Broken()", context));
    return RefPtr<ADMEvaluationError>(context->lastError());
  };
  const Ref<ADMEvaluationContextBase> first = plainContext(Value(), configuration);
  const Ref<ADMEvaluationContextBase> second = plainContext(Value(), configuration);
  const Ref<ADMEvaluationContextBase> apart = plainContext(Value(), configuration);
  const Ref<ADMEvaluationContextBase> other =
      plainContext(Value(), macrosOf({{"Broken", "1 lt \"x\""}}));
  second->shareConfigurationOf(*first);
  other->shareConfigurationOf(*first);
  plainContext()->shareConfigurationOf(*first);
  first->shareConfigurationOf(*plainContext());
  // The error of a compilation is the same object at every call.
  const RefPtr<ADMEvaluationError> error = errorIn(first);
  EXPECT_EQ(errorIn(second).get(), error.get());
  EXPECT_NE(errorIn(apart).get(), error.get());
  EXPECT_EQ(errorOf(*other), "");
  static_cast<void>(errorIn(other));
  EXPECT_EQ(errorOf(*other), "2: Incorrect types for comparison operation");
}

}  // namespace
}  // namespace commandfilter::testing
