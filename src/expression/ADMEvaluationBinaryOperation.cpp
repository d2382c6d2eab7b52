#include "expression/ADMEvaluationBinaryOperation.h"

#include <utility>
#include <vector>

#include "expression/ADMItemsList.h"
#include "expression/Concatenation.h"
#include "expression/EvaluationFailure.h"
#include "expression/OperandValue.h"
#include "expression/Operators.h"
#include "expression/TreePrinter.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/StackGuard.h"

namespace commandfilter {

namespace {

constexpr std::string_view kWrongComparison = "Incorrect types for comparison operation";

bool isFalse(const Value& value) {
  return value.isNil() || (value.isBoolean() && !value.number().boolValue());
}

bool isNumberOrNil(const Value& value) { return value.isNil() || value.isNumber(); }
std::int32_t bitsOf(const Value& value) { return value.isNil() ? 0 : value.number().intValue(); }

// Apart from the operations, which would otherwise make room for it whenever they begin.
[[gnu::cold, gnu::noinline]] Value failAtRuntime(const ADMEvaluationItemBase& item,
                                                 ADMEvaluationContext& context,
                                                 std::string_view message) {
  return fail(item, context, ErrorCategory::Runtime, message);
}

}  // namespace

constinit const Class ADMEvaluationBinaryOperation::kClass{
    .name = "ADMEvaluationBinaryOperation", .base = &ADMEvaluationBinaryOperationBase::kClass};

ADMEvaluationBinaryOperation::ADMEvaluationBinaryOperation(ItemType type) noexcept
    : ADMEvaluationBinaryOperationBase(type) {
  const Operator* row = operatorOfType(type);
  perform_ = row != nullptr && row->perform != nullptr
                 ? row->perform
                 : &ADMEvaluationBinaryOperation::failAsUnknown;
}

Value ADMEvaluationBinaryOperation::evaluate(ADMEvaluationContext& context) const {
  StackGuard::check();
  return (this->*perform_)(context);
}

Value ADMEvaluationBinaryOperation::failAsUnknown(ADMEvaluationContext& context) const {
  return fail(*this, context, ErrorCategory::Runtime, "Unknown operation type: %d", codeOf(type()));
}

Value ADMEvaluationBinaryOperation::performMakeListOperation(
    ADMEvaluationContext& /*context*/) const {
  // Lists inside lists are walked, not evaluated one inside the other: there may be a million.
  Ref<ADMItemsList> list = ADMItemsList::create();
  std::vector<const ADMEvaluationItemBase*> waiting{rightOperand(), leftOperand()};
  while (!waiting.empty()) {
    const ADMEvaluationItemBase* item = waiting.back();
    waiting.pop_back();
    if (const auto* inner = ofType(item, ItemType::MakeList)) {
      waiting.push_back(inner->rightOperand());
      waiting.push_back(inner->leftOperand());
    } else {
      list->appendItem(Value::sharing(item));
    }
  }
  return list;
}

Value ADMEvaluationBinaryOperation::performOrOperation(ADMEvaluationContext& context) const {
  Value left = evaluateOperand(leftOperand(), context);
  if (isFalse(left)) return evaluateOperand(rightOperand(), context);
  return left;
}

Value ADMEvaluationBinaryOperation::performAndOperation(ADMEvaluationContext& context) const {
  Value left = evaluateOperand(leftOperand(), context);
  if (isFalse(left)) return left;
  if (left.isBoolean()) return evaluateOperand(rightOperand(), context);
  Value right = evaluateOperand(rightOperand(), context);
  if (isFalse(right)) return right;
  return left;
}

bool ADMEvaluationBinaryOperation::operandsAreEqual(ADMEvaluationContext& context) const {
  const OperandValue left(leftOperand(), context);
  const OperandValue right(rightOperand(), context);
  return equal(*left, *right);
}

Value ADMEvaluationBinaryOperation::performEqualityOperation(ADMEvaluationContext& context) const {
  return Value::boolean(operandsAreEqual(context));
}

Value ADMEvaluationBinaryOperation::performUnequalityOperation(
    ADMEvaluationContext& context) const {
  return Value::boolean(!operandsAreEqual(context));
}

Value ADMEvaluationBinaryOperation::performNumberComparisonOperation(
    ADMEvaluationContext& context) const {
  const OperandValue left(leftOperand(), context);
  const OperandValue right(rightOperand(), context);
  if (!left->isNumber() || !right->isNumber()) {
    return failAtRuntime(*this, context, kWrongComparison);
  }
  const std::int32_t first = left->number().intValue();
  const std::int32_t second = right->number().intValue();
  switch (type()) {
    case ItemType::Less:
      return Value::boolean(first < second);
    case ItemType::LessOrEqual:
      return Value::boolean(first <= second);
    case ItemType::Greater:
      return Value::boolean(first > second);
    default:
      return Value::boolean(first >= second);
  }
}

Value ADMEvaluationBinaryOperation::performBitOperation(ADMEvaluationContext& context) const {
  const OperandValue left(leftOperand(), context);
  const OperandValue right(rightOperand(), context);
  if (!isNumberOrNil(*left) || !isNumberOrNil(*right)) {
    // The text of the comparisons serves the bit operations as well.
    return failAtRuntime(*this, context, kWrongComparison);
  }
  const std::int32_t first = bitsOf(*left);
  const std::int32_t second = bitsOf(*right);
  switch (type()) {
    case ItemType::BitAnd:
      return Number::integer(first & second);
    case ItemType::BitOr:
      return Number::integer(first | second);
    default:
      return Number::integer(first ^ second);
  }
}

Value ADMEvaluationBinaryOperation::performConcatOperation(ADMEvaluationContext& context) const {
  return Concatenation(context).perform(*this);
}

Value ADMEvaluationBinaryOperation::performConcatIfNotNilOperation(
    ADMEvaluationContext& context) const {
  return Concatenation(context).performIfNotNil(*this);
}

void ADMEvaluationBinaryOperation::print(TreePrinter& printer) const {
  printer.appendOperation(*this);
}

}  // namespace commandfilter
