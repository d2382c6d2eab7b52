#include "expression/ADMEvaluationBinaryOperation.h"

#include <utility>
#include <vector>

#include "expression/ADMItemsList.h"
#include "expression/EvaluationFailure.h"
#include "expression/Operators.h"
#include "expression/TreePrinter.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Dictionary.h"
#include "runtime/StackGuard.h"
#include "runtime/TextConcatenation.h"

namespace commandfilter {

namespace {

constexpr std::string_view kWrongComparison = "Incorrect types for comparison operation";
constexpr std::string_view kWrongConcatenation = "Incorrect types for + operation";
constexpr std::string_view kWrongArguments = "Incorrect arguments for + operation";

bool isFalse(const Value& value) {
  return value.isNil() || (value.isBoolean() && !value.number().boolValue());
}

bool isNumberOrNil(const Value& value) { return value.isNil() || value.isNumber(); }
std::int32_t bitsOf(const Value& value) { return value.isNil() ? 0 : value.number().intValue(); }

// An array followed by the elements of another, or by one value.
Value extendArray(const Array& left, const Value& right) {
  std::vector<Value> elements;
  const auto* other = castTo<Array>(right);
  elements.reserve(left.count() + (other != nullptr ? other->count() : 1));
  elements.insert(elements.end(), left.begin(), left.end());
  if (other != nullptr) {
    elements.insert(elements.end(), other->begin(), other->end());
  } else {
    elements.push_back(right);
  }
  return Array::create(std::move(elements));
}

}  // namespace

constinit const Class ADMEvaluationBinaryOperation::kClass{
    .name = "ADMEvaluationBinaryOperation", .base = &ADMEvaluationBinaryOperationBase::kClass};

Ref<ADMEvaluationBinaryOperation> ADMEvaluationBinaryOperation::itemWithOperationType(
    ItemType type) {
  return make<ADMEvaluationBinaryOperation>(type);
}

Value ADMEvaluationBinaryOperation::evaluate(ADMEvaluationContext& context) const {
  const Operator* row = operatorOfType(type());
  if (row == nullptr || row->perform == nullptr) {
    return fail(*this, context, ErrorCategory::Runtime, "Unknown operation type: %d",
                codeOf(type()));
  }
  StackGuard::check();
  return (this->*row->perform)(context);
}

Value ADMEvaluationBinaryOperation::evaluateLeft(ADMEvaluationContext& context) const {
  return leftOperand() != nullptr ? leftOperand()->evaluate(context) : Value();
}

Value ADMEvaluationBinaryOperation::evaluateRight(ADMEvaluationContext& context) const {
  return rightOperand() != nullptr ? rightOperand()->evaluate(context) : Value();
}

Value ADMEvaluationBinaryOperation::performMakeListOperation(
    ADMEvaluationContext& /*context*/) const {
  // Lists inside lists are walked, not evaluated one inside the other: there may be a million.
  Ref<ADMItemsList> list = ADMItemsList::create();
  std::vector<const ADMEvaluationItemBase*> waiting{rightOperand(), leftOperand()};
  while (!waiting.empty()) {
    const ADMEvaluationItemBase* item = waiting.back();
    waiting.pop_back();
    if (item != nullptr && item->type() == ItemType::MakeList) {
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
  Value left = evaluateLeft(context);
  return isFalse(left) ? evaluateRight(context) : left;
}

Value ADMEvaluationBinaryOperation::performAndOperation(ADMEvaluationContext& context) const {
  Value left = evaluateLeft(context);
  if (isFalse(left)) return left;
  Value right = evaluateRight(context);
  return isFalse(right) || left.isBoolean() ? right : left;
}

bool ADMEvaluationBinaryOperation::operandsAreEqual(ADMEvaluationContext& context) const {
  const Value left = evaluateLeft(context);
  const Value right = evaluateRight(context);
  return equal(left, right);
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
  const Value left = evaluateLeft(context);
  const Value right = evaluateRight(context);
  if (!left.isNumber() || !right.isNumber()) {
    return fail(*this, context, ErrorCategory::Runtime, kWrongComparison);
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
  const Value left = evaluateLeft(context);
  const Value right = evaluateRight(context);
  if (!isNumberOrNil(left) || !isNumberOrNil(right)) {
    // The text of the comparisons serves the bit operations as well.
    return fail(*this, context, ErrorCategory::Runtime, kWrongComparison);
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
  Value left = evaluateLeft(context);
  if (left.isBoolean()) {
    return fail(*this, context, ErrorCategory::Runtime, kWrongConcatenation);
  }
  const Value right = evaluateRight(context);
  if (const auto* array = castTo<Array>(left)) {
    return right.isNil() ? left : extendArray(*array, right);
  }
  if (const auto* dictionary = castTo<Dictionary>(left)) {
    // dictionary + (value, key)
    const auto* list = castTo<ADMItemsList>(right);
    const RefPtr<Array> items = list != nullptr ? list->items() : nullptr;
    if (!items || items->count() != 2) {
      return fail(*this, context, ErrorCategory::Runtime, kWrongArguments);
    }
    Value value = evaluateItem((*items)[0], context);
    if (value.isNil()) return left;
    Value key = evaluateItem((*items)[1], context);
    if (key.isNil()) return left;
    DictionaryBuilder builder(*dictionary);
    builder.set(std::move(key), std::move(value));
    return builder.build();
  }
  if (right.isBoolean()) {
    return fail(*this, context, ErrorCategory::Runtime, kWrongConcatenation);
  }
  if (left.isNil() && right.isNil()) return {};
  return concatenateTexts(std::move(left), right);
}

Value ADMEvaluationBinaryOperation::performConcatIfNotNilOperation(
    ADMEvaluationContext& context) const {
  Value left = evaluateLeft(context);
  if (left.isNil()) return {};
  if (left.isBoolean()) {
    return fail(*this, context, ErrorCategory::Runtime, kWrongConcatenation);
  }
  const Value right = evaluateRight(context);
  if (right.isNil()) return {};
  if (right.isBoolean()) {
    return fail(*this, context, ErrorCategory::Runtime, kWrongConcatenation);
  }
  return concatenateTexts(std::move(left), right);
}

void ADMEvaluationBinaryOperation::print(TreePrinter& printer) const {
  printer.appendOperation(*this);
}

}  // namespace commandfilter
