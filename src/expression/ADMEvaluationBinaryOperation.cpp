#include "expression/ADMEvaluationBinaryOperation.h"

#include <utility>
#include <vector>

#include "expression/ADMItemsList.h"
#include "expression/EvaluationFailure.h"
#include "expression/OperandValue.h"
#include "expression/Operators.h"
#include "expression/TreePrinter.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Dictionary.h"
#include "runtime/StackGuard.h"

namespace commandfilter {

namespace {

constexpr std::string_view kWrongComparison = "Incorrect types for comparison operation";
constexpr std::string_view kWrongConcatenation = "Incorrect types for + operation";
constexpr std::string_view kWrongArguments = "Incorrect arguments for + operation";

bool isFalse(const Value& value) {
  return value.isNil() || (value.isBoolean() && !value.number().boolValue());
}

// Another class's item may have the code as well.
bool isListOperation(const ADMEvaluationItemBase* item) {
  return item != nullptr && item->type() == ItemType::MakeList &&
         &item->classInfo() == &ADMEvaluationBinaryOperation::kClass;
}

bool isNumberOrNil(const Value& value) { return value.isNil() || value.isNumber(); }
std::int32_t bitsOf(const Value& value) { return value.isNil() ? 0 : value.number().intValue(); }

// Apart from the operations, which would otherwise make room for it whenever they begin.
[[gnu::cold, gnu::noinline]] Value failAtRuntime(const ADMEvaluationItemBase& item,
                                                 ADMEvaluationContext& context,
                                                 std::string_view message) {
  return fail(item, context, ErrorCategory::Runtime, message);
}

// The operation of a code that is no operator's.
Value failAsUnknown(const ADMEvaluationBinaryOperation& operation, ADMEvaluationContext& context) {
  return fail(operation, context, ErrorCategory::Runtime, "Unknown operation type: %d",
              codeOf(operation.type()));
}

}  // namespace

constinit const Class ADMEvaluationBinaryOperation::kClass{
    .name = "ADMEvaluationBinaryOperation", .base = &ADMEvaluationBinaryOperationBase::kClass};

ADMEvaluationBinaryOperation::ADMEvaluationBinaryOperation(ItemType type) noexcept
    : ADMEvaluationBinaryOperationBase(type) {
  const Operator* row = operatorOfType(type);
  perform_ = row != nullptr && row->perform != nullptr ? row->perform : &failAsUnknown;
}

Value ADMEvaluationBinaryOperation::evaluate(ADMEvaluationContext& context) const {
  StackGuard::check();
  return perform_(*this, context);
}

Value ADMEvaluationBinaryOperation::performMakeListOperation(
    ADMEvaluationContext& /*context*/) const {
  // Lists inside lists are walked, not evaluated one inside the other: there may be a million.
  Ref<ADMItemsList> list = ADMItemsList::create();
  std::vector<const ADMEvaluationItemBase*> waiting{rightOperand(), leftOperand()};
  while (!waiting.empty()) {
    const ADMEvaluationItemBase* item = waiting.back();
    waiting.pop_back();
    if (isListOperation(item)) {
      const auto& inner = static_cast<const ADMEvaluationBinaryOperation&>(*item);
      waiting.push_back(inner.rightOperand());
      waiting.push_back(inner.leftOperand());
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
  const Value left = evaluateOperand(leftOperand(), context);
  const Value right = evaluateOperand(rightOperand(), context);
  if (!left.isNumber() || !right.isNumber()) {
    return failAtRuntime(*this, context, kWrongComparison);
  }
  const std::int32_t first = left.number().intValue();
  const std::int32_t second = right.number().intValue();
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
  const Value left = evaluateOperand(leftOperand(), context);
  const Value right = evaluateOperand(rightOperand(), context);
  if (!isNumberOrNil(left) || !isNumberOrNil(right)) {
    // The text of the comparisons serves the bit operations as well.
    return failAtRuntime(*this, context, kWrongComparison);
  }
  const std::int32_t first = bitsOf(left);
  const std::int32_t second = bitsOf(right);
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
  Value left = evaluateOperand(leftOperand(), context);
  if (left.isBoolean()) return failAtRuntime(*this, context, kWrongConcatenation);
  const OperandValue right(rightOperand(), context);
  if (left.isKind(ObjectKind::Array)) {
    if (right->isNil()) return left;
    return context.extendArray(std::move(left), *right);
  }
  if (left.isKind(ObjectKind::Dictionary)) {
    return extendDictionary(std::move(left), *right, context);
  }
  if (right->isBoolean()) return failAtRuntime(*this, context, kWrongConcatenation);
  if (left.isNil() && right->isNil()) return {};
  return context.concatenate(std::move(left), *right);
}

// dictionary + (value, key)
Value ADMEvaluationBinaryOperation::extendDictionary(Value left, const Value& right,
                                                     ADMEvaluationContext& context) const {
  const auto* list = castTo<ADMItemsList>(right);
  const RefPtr<Array> items = list != nullptr ? list->items() : nullptr;
  if (!items || items->count() != 2) return failAtRuntime(*this, context, kWrongArguments);
  Value value = evaluateItem((*items)[0], context);
  if (value.isNil()) return left;
  Value key = evaluateItem((*items)[1], context);
  if (key.isNil()) return left;
  return context.extendDictionary(std::move(left), std::move(key), std::move(value));
}

Value ADMEvaluationBinaryOperation::performConcatIfNotNilOperation(
    ADMEvaluationContext& context) const {
  Value left = evaluateOperand(leftOperand(), context);
  if (left.isNil()) return {};
  if (left.isBoolean()) return failAtRuntime(*this, context, kWrongConcatenation);
  const OperandValue right(rightOperand(), context);
  if (right->isNil()) return {};
  if (right->isBoolean()) return failAtRuntime(*this, context, kWrongConcatenation);
  return context.concatenate(std::move(left), *right);
}

void ADMEvaluationBinaryOperation::print(TreePrinter& printer) const {
  printer.appendOperation(*this);
}

}  // namespace commandfilter
