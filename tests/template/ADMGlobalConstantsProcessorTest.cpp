#include "template/ADMGlobalConstantsProcessor.h"

#include <gtest/gtest.h>

#include <array>

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/protocol/ADMExternalProcedure.h"
#include "expression/ADMEvaluationProcessor.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Send.h"
#include "runtime/TestValues.h"

namespace commandfilter::testing {
namespace {

Ref<ADMGlobalConstantsProcessor> constantsOf(
    std::initializer_list<std::pair<Value, Value>> entries) {
  return ADMGlobalConstantsProcessor::initWithGlobalConstantsInfo(
      RefPtr<Dictionary>(castTo<Dictionary>(dictionaryOf(entries))));
}

Value valueOf(ADMGlobalConstantsProcessor& constants, std::string_view name) {
  return constants.valueOfConstant(String::create(std::string(name)).get());
}

TEST(GlobalConstants, EvaluatesAConstantOnce) {
  const auto constants = constantsOf({{stringOf("List"), stringOf("_Array(1, 2)")}});
  const Value first = valueOf(*constants, "List");
  EXPECT_EQ(descriptionOf(first), "(\n    1,\n    2\n)");
  EXPECT_TRUE(valueOf(*constants, "List").isIdenticalTo(first));
}

TEST(GlobalConstants, EvaluatesAFailingConstantOnce) {
  const auto constants = constantsOf({{stringOf("Wrong"), stringOf("1 lt \"x\"")}});
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(valueOf(*constants, "Wrong").isNil());
  ASSERT_EQ(constants->errors().size(), 1U);
  const TemplateError& error = constants->errors().front();
  EXPECT_EQ(error.key->view(), "Wrong");
  EXPECT_EQ(error.category(), 2);
  EXPECT_EQ(error.error->expression()->view(), "1 lt \"x\"");
  EXPECT_EQ(error.error->sourceRange(), (SourceRange{2, 4}));
}

// A context whose configuration has the object as its constants.
Ref<ADMEvaluationContextBase> contextWithConstants(Value constants) {
  return ADMEvaluationContextBase::initWithStatusService_globalConfiguration(
      Value(), RefPtr<Dictionary>(castTo<Dictionary>(
                   dictionaryOf({{stringOf("TemplateConstants"), std::move(constants)}}))));
}

// One compiled expression gives each template's own constants, however often it gave another's.
TEST(GlobalConstants, BelongToTheContextThatIsAsked) {
  const Ref<ADMEvaluationContextBase> first =
      contextWithConstants(constantsOf({{stringOf("Limit"), stringOf("5")}}));
  const Ref<ADMEvaluationContextBase> second =
      contextWithConstants(constantsOf({{stringOf("Limit"), stringOf("6")}}));
  const Ref<ADMEvaluationContextBase> none = contextWithConstants(constantsOf({}));
  const auto processor = ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
      String::create("$Limit"), first);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(descriptionOf(processor->execute()), "5");
    EXPECT_EQ(descriptionOf(processor->executeWithContext(*second)), "6");
    EXPECT_TRUE(processor->executeWithContext(*none).isNil());
  }
}

// A list of expressions is a constant too; it holds no constant that it has named.
TEST(GlobalConstants, MayNameConstantsInAList) {
  const auto constants = constantsOf({{stringOf("List"), stringOf("$Low, $High")},
                                      {stringOf("Low"), stringOf("1")},
                                      {stringOf("High"), stringOf("2")}});
  const Ref<ADMEvaluationContextBase> context = contextWithConstants(constants);
  const auto processor = ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
      String::create("_Array($List)"), context);
  static_cast<void>(processor->execute());
  static_cast<void>(processor->execute());
  EXPECT_EQ(valueOf(*constants, "Low").number().intValue(), 1);
}

// An expression does not keep itself alive by remembering a constant that names it; the fixture of
// all tests counts what is left.
TEST(GlobalConstants, AreNotRememberedWhenTheyHoldExpressions) {
  const auto constants = constantsOf({{stringOf("Entry"), stringOf("$Entry, \"key\"")}});
  const Ref<ADMEvaluationContextBase> context = contextWithConstants(constants);
  const auto processor = ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
      String::create("_Dictionary(1, \"a\") + $Entry"), context);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(castTo<Dictionary>(processor->execute())->count(), 2U);
  }
}

// How many entries the scratch store of the context has; adds one.
class ACountingExternalProcedure final : public Implements<Object, ADMExternalProcedure> {
 public:
  static const Class kClass;

  static Ref<ACountingExternalProcedure> init() { return make<ACountingExternalProcedure>(); }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool wantsEvaluateArguments() override { return false; }
  Value execute_context(const Array* /*arguments*/, ADMEvaluationContext* context) override {
    MutableDictionary& store = castTo<ADMEvaluationContextBase>(&context->object())->commonCache();
    Value count = Number::integer(store.count());
    store.setObject_forKey(count, count);
    return count;
  }
};

constexpr auto kCountingProtocols =
    conformances<ACountingExternalProcedure, ADMExternalProcedure>();
constexpr std::array kCountingInitializers{initializer<&ACountingExternalProcedure::init>("init")};
constinit const Class ACountingExternalProcedure::kClass{.name = "ACountingExternalProcedure",
                                                         .base = &Object::kClass,
                                                         .protocols = kCountingProtocols,
                                                         .initializers = kCountingInitializers};

TEST(GlobalConstants, EmptiesTheScratchStoreOfProceduresForEachConstant) {
  const std::array<const Class*, 1> classes{&ACountingExternalProcedure::kClass};
  const auto registration = ClassRegistry::shared().add(classes);
  const Value expression = stringOf("_External(\"Counting\")");
  const auto constants =
      constantsOf({{stringOf("First"), expression}, {stringOf("Second"), expression}});
  EXPECT_EQ(descriptionOf(valueOf(*constants, "First")), "0");
  EXPECT_EQ(descriptionOf(valueOf(*constants, "Second")), "0");
}

// Gives the null object.
class ANullExternalProcedure final : public Implements<Object, ADMExternalProcedure> {
 public:
  static const Class kClass;

  static Ref<ANullExternalProcedure> init() { return make<ANullExternalProcedure>(); }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool wantsEvaluateArguments() override { return false; }
  Value execute_context(const Array* /*arguments*/, ADMEvaluationContext* /*context*/) override {
    return Value::null();
  }
};

constexpr auto kNullProtocols = conformances<ANullExternalProcedure, ADMExternalProcedure>();
constexpr std::array kNullInitializers{initializer<&ANullExternalProcedure::init>("init")};
constinit const Class ANullExternalProcedure::kClass{.name = "ANullExternalProcedure",
                                                     .base = &Object::kClass,
                                                     .protocols = kNullProtocols,
                                                     .initializers = kNullInitializers};

TEST(GlobalConstants, GivesTheNullObjectOnce) {
  const std::array<const Class*, 1> classes{&ANullExternalProcedure::kClass};
  const auto registration = ClassRegistry::shared().add(classes);
  const auto constants = constantsOf({{stringOf("Null"), stringOf("_External(\"Null\")")}});
  EXPECT_TRUE(valueOf(*constants, "Null").isNull());
  EXPECT_TRUE(valueOf(*constants, "Null").isNil());
  // By an expression as well, whichever asks first.
  const Ref<ADMEvaluationContextBase> context =
      contextWithConstants(constantsOf({{stringOf("Null"), stringOf("_External(\"Null\")")}}));
  const auto processor = ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
      String::create("$Null"), context);
  EXPECT_TRUE(processor->execute().isNull());
  EXPECT_TRUE(processor->execute().isNil());
}

TEST(GlobalConstants, HasNothingWithoutADictionary) {
  const auto constants = ADMGlobalConstantsProcessor::initWithGlobalConstantsInfo(nullptr);
  EXPECT_TRUE(valueOf(*constants, "Any").isNil());
}

TEST(GlobalConstants, HasNoConstantWithoutAName) {
  const auto constants = constantsOf({{stringOf(""), stringOf("1")}});
  EXPECT_TRUE(constants->valueOfConstant(nullptr).isNil());
  EXPECT_EQ(descriptionOf(valueOf(*constants, "")), "1");
}

TEST(GlobalConstants, IsMadeAndAskedByName) {
  const Value info = dictionaryOf({{stringOf("One"), stringOf("1")}});
  const Value constants = instantiate(ADMGlobalConstantsProcessor::kClass,
                                      Selector("initWithGlobalConstantsInfo:"), {info});
  EXPECT_EQ(descriptionOf(send(constants, Selector("valueOfConstant:"), {stringOf("One")})), "1");
}

}  // namespace
}  // namespace commandfilter::testing
