#include "evaluation/ADMAggregateEvaluationContext.h"

#include <gtest/gtest.h>

#include "expression/Expressions.h"
#include "expression/TestService.h"
#include "runtime/Exception.h"
#include "runtime/SizeLimits.h"

namespace commandfilter::testing {
namespace {

Ref<ADMAggregateEvaluationContext> aggregateContextOver(Value list, Value initialValue,
                                                        const Ref<ADMEvaluationContext>& parent) {
  return ADMAggregateEvaluationContext::
      initWithParentContext_globalConfiguration_elementsList_initialValue(
          parent, nullptr, std::move(list), std::move(initialValue));
}

Ref<ADMAggregateEvaluationContext> aggregateContextOver(Value list, Value initialValue = Value()) {
  return aggregateContextOver(std::move(list), std::move(initialValue), TestContext::create());
}

std::string at(std::string_view expression, const Ref<ADMAggregateEvaluationContext>& context) {
  return shown(evaluate(expression, context));
}

TEST(AggregateContext, KnowsElementIndexAndAccumulator) {
  const Ref<ADMAggregateEvaluationContext> context =
      aggregateContextOver(arrayOf({Value::null(), numberOf(5)}), stringOf("start"));
  EXPECT_EQ(at("_Array(@element, @index, @initial)", context), R"([<null>, 0Q, "start"])");
  EXPECT_TRUE(context->element().isNull());
  EXPECT_TRUE(context->iterateNext());
  context->setInitialValue(numberOf(3));
  EXPECT_EQ(at("_Array(@element, @index, @initial)", context), "[5q, 1Q, 3q]");
  context->setInitialValue(Value());
  EXPECT_EQ(at("@initial", context), "nil");
}

TEST(AggregateContext, LeavesEveryOtherNameToItsParent) {
  const Ref<TestContext> parent = TestContext::create(
      {{"identifier", stringOf("the parent's")}, {"true", stringOf("its truth")}});
  const Ref<ADMAggregateEvaluationContext> context =
      aggregateContextOver(arrayOf({numberOf(1)}), Value(), parent);
  EXPECT_EQ(at("@identifier", context), R"("the parent's")");
  EXPECT_EQ(at("@true", context), R"("its truth")");
  EXPECT_EQ(at("@unknown", context), "nil");
  const Ref<ADMAggregateEvaluationContext> inner =
      aggregateContextOver(arrayOf({numberOf(2)}), numberOf(3), context);
  EXPECT_EQ(at("_Array(@element, @initial, @identifier)", inner), R"([2q, 3q, "the parent's"])");
}

TEST(AggregateContext, AsksTheServiceBeforeItsParent) {
  const Ref<TestContext> parent =
      TestContext::create({{"state", stringOf("the parent's")}}, TestService::create());
  const Ref<ADMAggregateEvaluationContext> context =
      aggregateContextOver(arrayOf({stringOf("x")}), Value(), parent);
  EXPECT_EQ(at("_Array(@state, @levelOf:)", context), R"(["ready", "level of x"])");
  EXPECT_EQ(shown(evaluate("@state", parent)), R"("the parent's")");
}

TEST(AggregateContext, KeepsErrorsToItself) {
  const Ref<TestContext> parent = TestContext::create();
  const Ref<ADMAggregateEvaluationContext> context =
      aggregateContextOver(arrayOf({numberOf(1)}), Value(), parent);
  EXPECT_EQ(at("1 lt @nil", context), "nil");
  EXPECT_EQ(errorOf(*context), "2: Incorrect types for comparison operation");
  EXPECT_EQ(parent->lastError(), nullptr);
}

TEST(AggregateContext, ReportsANameThatNoSelectorCanBeMadeOfToItsParent) {
  const Ref<TestContext> parent = TestContext::create();
  const Ref<ADMAggregateEvaluationContext> context =
      aggregateContextOver(arrayOf({}), Value(), parent);
  const EvaluationName name = EvaluationName::ofSymbol(String::create(std::string("\0", 1)));
  EXPECT_TRUE(context->processSelector(name).isNil());
  EXPECT_EQ(context->lastError(), nullptr);
  EXPECT_NE(parent->lastError(), nullptr);
}

// Cannot be a key, as a status service cannot.
class NoKey final : public Object {
 public:
  [[nodiscard]] static Ref<NoKey> create() { return make<NoKey>(); }

  [[nodiscard]] Value dictionaryKey() const override { throw Exception("no key"); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  NoKey() = default;
  ~NoKey() override = default;
};

// The accumulator is a text that a step may extend in place: nobody may notice.

TEST(AggregateContext, ExtendsItsTextInPlace) {
  const Ref<ADMAggregateEvaluationContext> context = aggregateContextOver(rangeOf(1));
  context->setInitialValue(String::create("a"));
  const Object* text = context->initialValue().object();
  for (int step = 0; step < 3; ++step) {
    Value result = evaluate(R"((@initial + "b") ~ 1)", context);
    EXPECT_EQ(result.object(), text);
    context->setInitialValue(std::move(result));
  }
  EXPECT_EQ(shown(context->initialValue()), R"("ab1b1b1")");
}

TEST(AggregateContext, KeepsItsTextUntilTheNextIsSet) {
  const Ref<ADMAggregateEvaluationContext> context = aggregateContextOver(rangeOf(1));
  context->setInitialValue(String::create("text"));
  EXPECT_EQ(at(R"(@initial + " and more")", context), R"("text and more")");
  EXPECT_EQ(shown(context->initialValue()), R"("text")");
  EXPECT_EQ(at(R"(@initial ~ "!")", context), R"("text!")");
  EXPECT_EQ(at("@initial", context), R"("text")");
}

TEST(AggregateContext, GivesEveryNamingOfItsTextTheSameValue) {
  for (const std::string_view step :
       {R"((@initial + "a") + @initial)", R"(@initial + ("a" + @initial))",
        R"((@initial + "a") + (@initial + ""))", R"((@initial ~ "a") ~ (@initial ~ ""))",
        R"(_GetItem(_Array(@initial + "a"), 0) + @initial)"}) {
    const Ref<ADMAggregateEvaluationContext> context = aggregateContextOver(rangeOf(1));
    context->setInitialValue(String::create("x"));
    EXPECT_EQ(at(step, context), R"("xax")") << step;
    EXPECT_EQ(shown(context->initialValue()), R"("x")") << step;
  }
  const Ref<ADMAggregateEvaluationContext> context = aggregateContextOver(rangeOf(1));
  context->setInitialValue(String::create("x"));
  EXPECT_EQ(at(R"(_Array(@initial + "a", @initial, @initial + "b", @initial))", context),
            R"(["xa", "x", "xb", "x"])");
  EXPECT_EQ(at("@initial + @initial + @initial", context), R"("xxx")");
}

TEST(AggregateContext, DoesNotExtendATextThatOthersHold) {
  const Value start = stringOf("start");
  const Ref<ADMAggregateEvaluationContext> context = aggregateContextOver(rangeOf(1), start);
  const Value result = evaluate(R"(@initial + "!")", context);
  EXPECT_EQ(shown(result), R"("start!")");
  EXPECT_EQ(shown(start), R"("start")");
  EXPECT_FALSE(result.isIdenticalTo(start));
  EXPECT_TRUE(context->initialValue().isIdenticalTo(start));
}

TEST(AggregateContext, KeepsItsTextWhenTheStepFails) {
  for (const std::string_view step :
       {R"(@initial + "a" + (1 lt @nil))", R"((@initial + "a") ~ (1 lt @nil))",
        R"(@initial + "a" + (1 eq 1))", R"(@initial + "a" eq (1 lt @nil))"}) {
    const Ref<ADMAggregateEvaluationContext> context = aggregateContextOver(rangeOf(1));
    context->setInitialValue(String::create("x"));
    static_cast<void>(evaluate(step, context));
    EXPECT_NE(context->lastError(), nullptr) << step;
    EXPECT_EQ(shown(context->initialValue()), R"("x")") << step;
  }
}

TEST(AggregateContext, KeepsItsTextWhenADescriptionIsTooDeep) {
  const Ref<TestContext> parent =
      TestContext::create({{"deep", nestedArrays(kDescriptionDepth + 1, numberOf(1))}});
  const Ref<ADMAggregateEvaluationContext> context =
      aggregateContextOver(rangeOf(1), Value(), parent);
  context->setInitialValue(String::create("x"));
  EXPECT_NE(reasonOf([&] { static_cast<void>(evaluate(R"(@initial + "a" + @deep)", context)); }),
            "");
  EXPECT_EQ(shown(context->initialValue()), R"("x")");
}

// Whoever calls a procedure in a step may catch what the procedure's arguments raise, and go on.
TEST(AggregateContext, KeepsItsArrayWhenAnElementIsTooMuch) {
  const Ref<TestContext> parent =
      TestContext::create({{"many", Array::create(ValueVector(kLargestArray, numberOf(0)))}});
  const Ref<ADMAggregateEvaluationContext> context =
      aggregateContextOver(rangeOf(1), Value(), parent);
  context->setInitialValue(arrayOf({stringOf("x")}));
  EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluate("@initial + @many", context)); }),
            "a value is too large");
  EXPECT_EQ(at("@initial", context), R"(["x"])");
  EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluate("@initial + 1 + @many", context)); }),
            "a value is too large");
  EXPECT_EQ(at("@initial", context), R"(["x"])");
}

TEST(AggregateContext, KeepsItsDictionaryWhenAKeyIsNone) {
  const Ref<TestContext> parent = TestContext::create({{"key", NoKey::create()}});
  const Ref<ADMAggregateEvaluationContext> context =
      aggregateContextOver(rangeOf(1), Value(), parent);
  context->setInitialValue(DictionaryBuilder().build());
  EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluate("@initial + (1, @key)", context)); }),
            "no key");
  EXPECT_EQ(at("@initial", context), "{}");
  DictionaryBuilder entry;
  entry.set("a", numberOf(1));
  context->setInitialValue(entry.build());
  EXPECT_EQ(
      reasonOf([&] { static_cast<void>(evaluate(R"(@initial + (2, "a") + (3, @key))", context)); }),
      "no key");
  EXPECT_EQ(at("@initial", context), R"({"a": 1q})");
}

TEST(AggregateContext, AppendsDescriptions) {
  const Ref<ADMAggregateEvaluationContext> context = aggregateContextOver(rangeOf(1));
  context->setInitialValue(String::create("x"));
  EXPECT_EQ(at("@initial + _Array(1) + 2 + @nil", context), R"("x(
    1
)2")");
}

}  // namespace
}  // namespace commandfilter::testing
