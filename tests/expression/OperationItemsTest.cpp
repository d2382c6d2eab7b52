// Operators as items: what the compiler never makes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "expression/ADMEvaluationBinaryOperation.h"
#include "expression/ADMEvaluationNonExecutable.h"
#include "expression/ADMEvaluationNumber.h"
#include "expression/ADMEvaluationOperatorProcedure.h"
#include "expression/ADMEvaluationProcedure.h"
#include "expression/ADMEvaluationString.h"
#include "expression/ADMEvaluationUnaryOperation.h"
#include "expression/Expressions.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;

class UnknownOperation : public ::testing::TestWithParam<int> {};

TEST_P(UnknownOperation, IsReportedWithItsCode) {
  const Ref<TestContext> context = TestContext::create();
  const auto type = static_cast<ItemType>(GetParam());
  EXPECT_TRUE(
      ADMEvaluationBinaryOperation::itemWithOperationType(type)->evaluate(*context).isNil());
  EXPECT_EQ(errorOf(*context), "2: Unknown operation type: " + std::to_string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Codes, UnknownOperation,
                         ::testing::Values(-1, 0, 6, 20, 35, 36, 37, 50, 52, INT32_MIN, INT32_MAX));

class WrongUnaryOperation : public ::testing::TestWithParam<int> {};

TEST_P(WrongUnaryOperation, IsReported) {
  const Ref<TestContext> context = TestContext::create();
  const auto type = static_cast<ItemType>(GetParam());
  EXPECT_TRUE(ADMEvaluationUnaryOperation::itemWithOperationType(type)->evaluate(*context).isNil());
  EXPECT_EQ(errorOf(*context), "2: Incorrect unary operation");
}

INSTANTIATE_TEST_SUITE_P(Codes, WrongUnaryOperation, ::testing::Values(-1, 0, 34, 36, INT32_MAX));

TEST(OperationItems, TakeAMissingOperandForNil) {
  const Ref<TestContext> context = TestContext::create();
  const auto resultOfType = [&context](ItemType type) {
    return shown(ADMEvaluationBinaryOperation::itemWithOperationType(type)->evaluate(*context));
  };
  EXPECT_EQ(resultOfType(ItemType::Equal), "1c");
  EXPECT_EQ(resultOfType(ItemType::Concatenate), "nil");
  EXPECT_EQ(resultOfType(ItemType::BitOr), "0i");
  EXPECT_EQ(
      shown(ADMEvaluationUnaryOperation::itemWithOperationType(ItemType::Not)->evaluate(*context)),
      "1c");
  EXPECT_EQ(errorOf(*context), "");
}

// An operation that is asked for "+" whatever its own code is leaves its operands to theirs.
TEST(OperationItems, OperandsKeepTheirOperationWhateverIsPerformedWithThem) {
  const Ref<TestContext> context = TestContext::create();
  const auto inner = ADMEvaluationBinaryOperation::itemWithOperationType(ItemType::Less);
  inner->setLeftOperand(ADMEvaluationNumber::itemWithNumber(Number::integer(1)));
  inner->setRightOperand(ADMEvaluationString::itemWithString(String::create("x")));
  const auto outer = ADMEvaluationBinaryOperation::itemWithOperationType(ItemType::Less);
  outer->setLeftOperand(inner);
  outer->setRightOperand(ADMEvaluationString::itemWithString(String::create("y")));
  EXPECT_EQ(shown(outer->performConcatOperation(*context)), "\"y\"");
  EXPECT_EQ(errorOf(*context), "2: Incorrect types for comparison operation");
}

TEST(OperationItems, AListOfMissingOperandsHoldsNullObjects) {
  const Value value = ADMEvaluationBinaryOperation::itemWithOperationType(ItemType::MakeList)
                          ->evaluate(*TestContext::create());
  const auto* list = castTo<ADMItemsList>(value);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(shown(list->items()), "[<null>, <null>]");
}

TEST(OperationItems, ReplaceTheirOperands) {
  const Ref<TestContext> context = TestContext::create();
  const Ref<ADMEvaluationBinaryOperation> sum =
      ADMEvaluationBinaryOperation::itemWithOperationType(ItemType::Concatenate);
  const Ref<ADMEvaluationNumber> one = ADMEvaluationNumber::itemWithNumber(Number::integer(1));
  sum->setLeftOperand(one);
  sum->setRightOperand(one);
  sum->setLeftOperand(RefPtr<ADMEvaluationItemBase>(sum->leftOperand()));
  EXPECT_EQ(shown(sum->evaluate(*context)), R"("11")");
  sum->setLeftOperand(ADMEvaluationString::itemWithString(String::create("a")));
  EXPECT_EQ(shown(sum->evaluate(*context)), R"("a1")");
}

TEST(OperationItems, ThatHaveNoValueReportTheirCode) {
  for (const ItemType type :
       {ItemType::EmptyArguments, ItemType::OpeningBrace, ItemType::ClosingBrace}) {
    const Ref<TestContext> context = TestContext::create();
    EXPECT_TRUE(ADMEvaluationNonExecutable::itemWithItemType(type)->evaluate(*context).isNil());
    EXPECT_EQ(errorOf(*context),
              "1: Evaluating item with type: " + std::to_string(static_cast<int>(type)));
  }
}

TEST(OperationItems, OnlyItemsCanBeEvaluated) {
  const Ref<TestContext> context = TestContext::create();
  for (const Value& value : {Value(), Value::null(), numberOf(1), stringOf("a"), Value(context)}) {
    EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluateItem(value, *context)); }),
              "an argument is no item of an expression");
  }
}

// The codes of texts and numbers make no literals of other items.
TEST(OperationItems, AreEvaluatedAsOperandsWhateverTheirCode) {
  for (const ItemType type : {ItemType::String, ItemType::Number}) {
    const auto sum = ADMEvaluationBinaryOperation::itemWithOperationType(ItemType::Concatenate);
    sum->setLeftOperand(ADMEvaluationBinaryOperation::itemWithOperationType(type));
    const Ref<TestContext> context = TestContext::create();
    EXPECT_EQ(shown(sum->evaluate(*context)), "nil");
    EXPECT_EQ(errorOf(*context),
              "2: Unknown operation type: " + std::to_string(static_cast<int>(type)));
    sum->setLeftOperand(ADMEvaluationNonExecutable::itemWithItemType(type));
    const Ref<TestContext> second = TestContext::create();
    EXPECT_EQ(shown(sum->evaluate(*second)), "nil");
    EXPECT_EQ(errorOf(*second),
              "1: Evaluating item with type: " + std::to_string(static_cast<int>(type)));
    // To the right, which another function looks at.
    sum->setLeftOperand(nullptr);
    sum->setRightOperand(ADMEvaluationUnaryOperation::itemWithOperationType(type));
    const Ref<TestContext> third = TestContext::create();
    EXPECT_EQ(shown(sum->evaluate(*third)), "nil");
    EXPECT_EQ(errorOf(*third), "2: Incorrect unary operation");
  }
}

// The base has no value of its own.
class ValuelessItem final : public ADMEvaluationItemBase {
 public:
  ValuelessItem() : ADMEvaluationItemBase(ItemType::String) {}
  ~ValuelessItem() override = default;
  void print(TreePrinter& printer) const override { printer.append("?"); }
};

TEST(OperationItems, TheBaseHasNoValue) {
  const Ref<ValuelessItem> item = make<ValuelessItem>();
  EXPECT_EQ(reasonOf([&item] { static_cast<void>(item->evaluate(*TestContext::create())); }),
            "ADMEvaluationItemBase: unrecognized selector evaluate:");
  EXPECT_EQ(descriptionOf(item), "?");
}

TEST(OperationItems, HandOverTheSameArgumentsAtEveryCall) {
  const Ref<TestContext> context = TestContext::create();
  std::vector<const Array*> seen;
  context->functions["note"] = [&seen](TestContext&, const Array* items) {
    seen.push_back(items);
    return numberOf(static_cast<std::int64_t>(items->count()));
  };
  const Ref<ADMEvaluationProcessor> prefix = compile(R"(_Run("note", 2, 3))", context);
  const Ref<ADMEvaluationProcessor> member = compile(R"("note" _Run(2, 3))", context);
  for (const auto& processor : {prefix, prefix, member, member}) {
    EXPECT_EQ(shown(processor->execute()), "3q");
  }
  EXPECT_THAT(seen, ElementsAre(seen[0], seen[0], seen[2], seen[2]));
}

Ref<ADMEvaluationNumber> itemOf(std::int64_t number) {
  return ADMEvaluationNumber::itemWithNumber(Number::integer(number));
}

TEST(OperationItems, HandOverTheArgumentsThatTheyHaveNow) {
  const Ref<TestContext> context = TestContext::create();
  const Ref<ADMEvaluationProcedure> prefix =
      ADMEvaluationProcedure::itemWithProcedureName(String::create("Array"));
  prefix->setOperand(itemOf(1));
  EXPECT_EQ(shown(prefix->evaluate(*context)), "[1q]");
  prefix->setOperand(itemOf(2));
  EXPECT_EQ(shown(prefix->evaluate(*context)), "[2q]");
  const Ref<ADMEvaluationOperatorProcedure> member =
      ADMEvaluationOperatorProcedure::itemWithProcedureName(String::create("Array"));
  member->setLeftOperand(itemOf(1));
  member->setRightOperand(itemOf(2));
  EXPECT_EQ(shown(member->evaluate(*context)), "[1q, 2q]");
  member->setRightOperand(itemOf(3));
  EXPECT_EQ(shown(member->evaluate(*context)), "[1q, 3q]");
  member->setLeftOperand(itemOf(4));
  EXPECT_EQ(shown(member->evaluate(*context)), "[4q, 3q]");
}

TEST(OperationItems, AListTakesOnlyListsOfItsOwnClassApart) {
  for (const Ref<ADMEvaluationItemBase>& other :
       {Ref<ADMEvaluationItemBase>(
            ADMEvaluationUnaryOperation::itemWithOperationType(ItemType::MakeList)),
        Ref<ADMEvaluationItemBase>(
            ADMEvaluationNonExecutable::itemWithItemType(ItemType::MakeList))}) {
    const Ref<ADMEvaluationBinaryOperation> list =
        ADMEvaluationBinaryOperation::itemWithOperationType(ItemType::MakeList);
    list->setLeftOperand(other);
    list->setRightOperand(itemOf(1));
    const Value value = list->evaluate(*TestContext::create());
    const auto* items = castTo<ADMItemsList>(value);
    ASSERT_NE(items, nullptr);
    ASSERT_EQ(items->items()->count(), 2U);
    EXPECT_TRUE((*items->items())[0].isIdenticalTo(other));
  }
}

TEST(OperationItems, ACallWithoutOperandHasNoArguments) {
  const Ref<TestContext> context = TestContext::create();
  const Ref<ADMEvaluationProcedure> call =
      ADMEvaluationProcedure::itemWithProcedureName(String::create("Array"));
  EXPECT_EQ(shown(call->evaluate(*context)), "[]");
}

TEST(OperationItems, AMemberCallWithoutOperandsPassesNullObjects) {
  const Ref<TestContext> context = TestContext::create();
  const Ref<ADMEvaluationOperatorProcedure> call =
      ADMEvaluationOperatorProcedure::itemWithProcedureName(String::create("Array"));
  EXPECT_EQ(reasonOf([&] { static_cast<void>(call->evaluate(*context)); }),
            "an argument is no item of an expression");
}

}  // namespace
}  // namespace commandfilter::testing
