#include "expression/ADMEvaluationStack.h"

#include <gtest/gtest.h>

#include "expression/ADMEvaluationBinaryOperation.h"
#include "expression/ADMEvaluationNumber.h"
#include "expression/ADMEvaluationUnaryOperation.h"
#include "expression/Expressions.h"

namespace commandfilter::testing {
namespace {

Ref<ADMEvaluationNumber> numberItem(std::int64_t number) {
  return ADMEvaluationNumber::itemWithNumber(Number::integer(number));
}

TEST(Stack, IsEmptyAtFirst) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  EXPECT_TRUE(stack->empty());
  EXPECT_FALSE(stack->top());
  EXPECT_FALSE(stack->take());
  stack->pop();
  EXPECT_TRUE(stack->empty());
}

TEST(Stack, GivesTheLastItemFirst) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  const Ref<ADMEvaluationNumber> first = numberItem(1);
  const Ref<ADMEvaluationNumber> second = numberItem(2);
  stack->push(first);
  stack->push(second);
  EXPECT_EQ(stack->top().get(), second.get());
  EXPECT_EQ(stack->take().get(), second.get());
  EXPECT_EQ(stack->top().get(), first.get());
  stack->pop();
  EXPECT_TRUE(stack->empty());
}

TEST(Stack, KeepsTheTopAliveForWhoAskedForIt) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  stack->push(numberItem(5));
  const RefPtr<ADMEvaluationItemBase> top = stack->top();
  stack->pop();
  EXPECT_EQ(shown(top->evaluate(*TestContext::create())), "5q");
}

TEST(Stack, ExchangesItsTop) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  const Ref<ADMEvaluationNumber> first = numberItem(1);
  const Ref<ADMEvaluationNumber> second = numberItem(2);
  const Ref<ADMEvaluationNumber> third = numberItem(3);
  EXPECT_FALSE(stack->exchangeTop(first));
  EXPECT_TRUE(stack->empty());
  stack->push(first);
  stack->push(second);
  EXPECT_EQ(stack->exchangeTop(third).get(), second.get());
  EXPECT_EQ(stack->take().get(), third.get());
  EXPECT_EQ(stack->take().get(), first.get());
}

TEST(Stack, IgnoresNil) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  stack->push(nullptr);
  EXPECT_TRUE(stack->empty());
  EXPECT_FALSE(stack->pushWithSubtreeCreation(nullptr));
}

TEST(Stack, DescribesItsElements) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  EXPECT_EQ(descriptionOf(stack), "Stack: (\n)");
  stack->push(numberItem(1));
  stack->push(numberItem(2));
  EXPECT_EQ(descriptionOf(stack), "Stack: (\n    1,\n    2\n)");
}

TEST(Stack, GivesAnOperatorItsOperands) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  EXPECT_TRUE(stack->pushWithSubtreeCreation(numberItem(1)));
  EXPECT_TRUE(stack->pushWithSubtreeCreation(numberItem(2)));
  EXPECT_TRUE(stack->pushWithSubtreeCreation(numberItem(3)));
  EXPECT_TRUE(stack->pushWithSubtreeCreation(
      ADMEvaluationBinaryOperation::itemWithOperationType(ItemType::Concatenate)));
  EXPECT_TRUE(stack->pushWithSubtreeCreation(
      ADMEvaluationUnaryOperation::itemWithOperationType(ItemType::Not)));
  EXPECT_EQ(descriptionOf(stack), "Stack: (\n    1,\n    (!(2 + 3))\n)");
}

TEST(Stack, LosesWhatADroppedOperatorTook) {
  const Ref<ADMEvaluationStack> stack = ADMEvaluationStack::create();
  stack->push(numberItem(1));
  const Ref<ADMEvaluationBinaryOperation> plus =
      ADMEvaluationBinaryOperation::itemWithOperationType(ItemType::Concatenate);
  EXPECT_FALSE(stack->pushWithSubtreeCreation(plus));
  EXPECT_TRUE(stack->empty());
  EXPECT_EQ(plus->leftOperand(), nullptr);
  EXPECT_EQ(plus->rightOperand(), nullptr);
  EXPECT_FALSE(stack->pushWithSubtreeCreation(
      ADMEvaluationUnaryOperation::itemWithOperationType(ItemType::Not)));
  EXPECT_TRUE(stack->empty());
}

}  // namespace
}  // namespace commandfilter::testing
