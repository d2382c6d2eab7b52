// Items as their factories make them.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "expression/ADMEvaluationBinaryOperation.h"
#include "expression/ADMEvaluationFeaturePath.h"
#include "expression/ADMEvaluationGlobalConstant.h"
#include "expression/ADMEvaluationGlobalValue.h"
#include "expression/ADMEvaluationNonExecutable.h"
#include "expression/ADMEvaluationNumber.h"
#include "expression/ADMEvaluationOperatorProcedure.h"
#include "expression/ADMEvaluationProcedure.h"
#include "expression/ADMEvaluationSelector.h"
#include "expression/ADMEvaluationStack.h"
#include "expression/ADMEvaluationString.h"
#include "expression/ADMEvaluationUnaryOperation.h"
#include "expression/Expressions.h"

namespace commandfilter::testing {
namespace {

Ref<String> textOf(std::string_view text) { return String::create(std::string(text)); }

TEST(EvaluationItems, HaveTheCodeOfTheirClass) {
  const Ref<String> name = textOf("name");
  EXPECT_EQ(codeOf(ADMEvaluationString::itemWithString(name)->type()), 0);
  EXPECT_EQ(codeOf(ADMEvaluationNumber::itemWithNumber(Number::integer(5))->type()), 1);
  EXPECT_EQ(codeOf(ADMEvaluationGlobalConstant::itemWithName(name)->type()), 2);
  EXPECT_EQ(codeOf(ADMEvaluationGlobalValue::itemWithName(name)->type()), 3);
  EXPECT_EQ(codeOf(ADMEvaluationSelector::itemWithSelectorName(name)->type()), 4);
  const Ref<Array> path = Array::create({name});
  EXPECT_EQ(codeOf(ADMEvaluationFeaturePath::itemWithFeaturePathComponents(path)->type()), 5);
  EXPECT_EQ(codeOf(ADMEvaluationProcedure::itemWithProcedureName(name)->type()), 36);
  EXPECT_EQ(codeOf(ADMEvaluationOperatorProcedure::itemWithProcedureName(name)->type()), 36);
  for (const int code : {6, 50, 51}) {
    const auto type = static_cast<ItemType>(code);
    EXPECT_EQ(codeOf(ADMEvaluationNonExecutable::itemWithItemType(type)->type()), code);
  }
  for (int code = 21; code <= 35; ++code) {
    const auto type = static_cast<ItemType>(code);
    EXPECT_EQ(codeOf(ADMEvaluationBinaryOperation::itemWithOperationType(type)->type()), code);
    EXPECT_EQ(codeOf(ADMEvaluationUnaryOperation::itemWithOperationType(type)->type()), code);
  }
}

TEST(EvaluationItems, KeepWhatTheyAreMadeOf) {
  const Ref<TestContext> context = TestContext::create();
  const Ref<String> name = textOf("name");
  const Ref<ADMEvaluationString> string = ADMEvaluationString::itemWithString(name);
  EXPECT_EQ(string->string(), name.get());
  EXPECT_TRUE(string->evaluate(*context).isIdenticalTo(name));
  EXPECT_TRUE(ADMEvaluationString::itemWithString(nullptr)->evaluate(*context).isNil());
  EXPECT_EQ(ADMEvaluationGlobalConstant::itemWithName(name)->name().get(), name.get());
  EXPECT_EQ(ADMEvaluationGlobalValue::itemWithName(name)->name().get(), name.get());
  EXPECT_EQ(ADMEvaluationSelector::itemWithSelectorName(name)->selectorName().get(), name.get());
  const Ref<Array> path = Array::create({name});
  EXPECT_EQ(ADMEvaluationFeaturePath::itemWithFeaturePathComponents(path)->featurePath().get(),
            path.get());
  EXPECT_EQ(ADMEvaluationProcedure::itemWithProcedureName(name)->procedureName().get(), name.get());
  EXPECT_EQ(ADMEvaluationOperatorProcedure::itemWithProcedureName(name)->procedureName().get(),
            name.get());
  const Ref<ADMEvaluationNumber> number =
      ADMEvaluationNumber::itemWithNumber(Number::integer(std::uint64_t{5}));
  EXPECT_EQ(shown(number->evaluate(*context)), "5Q");
  EXPECT_EQ(errorOf(*context), "");
}

TEST(EvaluationItems, PutThemselvesOnTheStack) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  const Ref<ADMEvaluationNonExecutable> brace =
      ADMEvaluationNonExecutable::itemWithItemType(ItemType::ClosingBrace);
  EXPECT_TRUE(brace->pushToStack(*stack));
  EXPECT_EQ(stack->top().get(), brace.get());
}

// An operation of another class that has the code of lists.
Ref<ADMEvaluationUnaryOperation> noList() {
  return ADMEvaluationUnaryOperation::itemWithOperationType(ItemType::MakeList);
}

TEST(EvaluationItems, ACallWhoseListGivesNoItemsHasNoArguments) {
  const Ref<TestContext> context = TestContext::create();
  const Ref<ADMEvaluationProcedure> call =
      ADMEvaluationProcedure::itemWithProcedureName(textOf("Array"));
  call->setOperand(noList());
  EXPECT_EQ(shown(call->evaluate(*context)), "[]");
  EXPECT_EQ(errorOf(*context), "2: Incorrect unary operation");
}

TEST(EvaluationItems, AMemberCallWhoseListGivesNoItemsPassesTheNullObject) {
  const Ref<TestContext> context = TestContext::create();
  std::string seen;
  context->functions["look"] = [&seen](TestContext&, const Array* items) {
    seen = descriptionOf(Value::sharing(items));
    return Value();
  };
  const Ref<ADMEvaluationOperatorProcedure> call =
      ADMEvaluationOperatorProcedure::itemWithProcedureName(textOf("Run"));
  call->setLeftOperand(ADMEvaluationString::itemWithString(textOf("look")));
  call->setRightOperand(noList());
  EXPECT_TRUE(call->evaluate(*context).isNil());
  EXPECT_EQ(seen, "(\n    \"look\",\n    <null>\n)");
}

// A closing brace that comes before any operator is taken for one, and later for an operand. What
// then compiles cannot be written with braces, so it is no language case.
TEST(EvaluationItems, AStackedClosingBraceBecomesAnOperand) {
  const auto resultAndErrorOf = [](std::string_view expression) {
    const Ref<TestContext> context = TestContext::create();
    const std::string result = resultOf(expression, context);
    return result + ", " + errorOf(*context);
  };
  EXPECT_EQ(resultAndErrorOf(") + 5"), "\"5\", 1: Evaluating item with type: 51");
  EXPECT_EQ(resultAndErrorOf("5 ) +"), "\"5\", 1: Evaluating item with type: 51");
  EXPECT_EQ(resultAndErrorOf("(5) ) +"), "\"5\", 1: Evaluating item with type: 51");
  EXPECT_EQ(resultAndErrorOf(") not"), "1c, 1: Evaluating item with type: 51");
  EXPECT_EQ(resultAndErrorOf(") or 5 + 6"), "\"56\", 1: Evaluating item with type: 51");
  EXPECT_EQ(resultAndErrorOf("5 ) _Array"), "[5q], 1: Evaluating item with type: 51");
}

}  // namespace
}  // namespace commandfilter::testing
