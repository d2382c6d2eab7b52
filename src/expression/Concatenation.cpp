#include "expression/Concatenation.h"

#include <new>
#include <span>
#include <string_view>
#include <utility>

#include "expression/ADMItemsList.h"
#include "expression/EvaluationFailure.h"
#include "expression/LiteralItem.h"
#include "expression/OperandValue.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/SizeLimits.h"

namespace commandfilter {

namespace {

constexpr std::string_view kWrongArguments = "Incorrect arguments for + operation";
constexpr Value kNil;

// Apart from what is done otherwise, which would make room for it whenever it begins.
[[gnu::cold, gnu::noinline]] Value failWithWrongTypes(const ADMEvaluationItemBase& item,
                                                      ADMEvaluationContext& context) {
  return fail(item, context, ErrorCategory::Runtime, "Incorrect types for + operation");
}

// dictionary + (value, key)
[[gnu::noinline]] Value extendDictionary(const ADMEvaluationBinaryOperation& operation, Value left,
                                         const Value& right, ADMEvaluationContext& context) {
  const auto* list = castTo<ADMItemsList>(right);
  const RefPtr<Array> items = list != nullptr ? list->items() : nullptr;
  if (!items || items->count() != 2) {
    return fail(operation, context, ErrorCategory::Runtime, kWrongArguments);
  }
  Value value = evaluateItem((*items)[0], context);
  if (value.isNil()) return left;
  Value key = evaluateItem((*items)[1], context);
  if (key.isNil()) return left;
  return context.extendDictionary(std::move(left), std::move(key), std::move(value));
}

}  // namespace

Value Concatenation::perform(const ADMEvaluationBinaryOperation& last) {
  std::array<const ADMEvaluationBinaryOperation*, kMost>
      chain;  // NOLINT: written before it is read
  std::size_t count = 0;
  for (const auto* operation = &last; operation != nullptr && count < kMost;
       operation =
           ADMEvaluationBinaryOperation::ofType(operation->leftOperand(), ItemType::Concatenate)) {
    chain[count++] = operation;
  }
  value_ = evaluateOperand(chain[count - 1]->leftOperand(), context_);
  while (count > 0) performNext(*chain[--count]);
  return textCount_ == 0 ? std::move(value_) : textSoFar();
}

Value Concatenation::performIfNotNil(const ADMEvaluationBinaryOperation& operation) {
  value_ = evaluateOperand(operation.leftOperand(), context_);
  if (value_.isNil()) return {};
  if (value_.isBoolean()) return failWithWrongTypes(operation, context_);
  const Value& right = valueOfRight(operation);
  if (right.isNil()) return {};
  if (right.isBoolean()) return failWithWrongTypes(operation, context_);
  addDescription(right);
  return textSoFar();
}

// Most operands are texts.
inline void Concatenation::performNext(const ADMEvaluationBinaryOperation& operation) {
  if (value_.isBoolean()) return fail(operation);
  const Value& right = valueOfRight(operation);
  if (value_.isKind(ObjectKind::String) && right.isKind(ObjectKind::String)) {
    addText(static_cast<const String&>(*right.object()));
  } else {
    performWith(operation, right);
  }
}

void Concatenation::performWith(const ADMEvaluationBinaryOperation& operation, const Value& right) {
  if (value_.isKind(ObjectKind::Array)) {
    if (!right.isNil()) value_ = context_.extendArray(std::move(value_), right);
  } else if (value_.isKind(ObjectKind::Dictionary)) {
    value_ = extendDictionary(operation, std::move(value_), right, context_);
  } else if (right.isBoolean()) {
    fail(operation);
  } else {
    addDescription(right);
  }
}

// Nil is the empty text, unless it stands for both.
void Concatenation::addDescription(const Value& right) {
  if (right.isNil() && value_.isNil()) return;
  if (value_.isNil()) {
    value_ = describe(right);
    return;
  }
  if (!value_.isKind(ObjectKind::String)) value_ = describe(value_);
  if (right.isNil()) return;
  const Value& text = hold([&] { return Value(describe(right)); });
  addText(static_cast<const String&>(*text.object()));
}

inline void Concatenation::addText(const String& text) {
  if (textCount_ == 0) size_ = static_cast<const String&>(*value_.object()).view().size();
  // At once, as if the text were made at every step.
  checkTextSize(size_ += text.view().size());
  texts_[textCount_++] = &text;
}

const Value& Concatenation::valueOfRight(const ADMEvaluationBinaryOperation& operation) {
  const ADMEvaluationItemBase* right = operation.rightOperand();
  if (right == nullptr) return kNil;
  if (const LiteralItem* literal = literalOf(*right)) return literal->value();
  return hold([&] { return right->evaluate(context_); });
}

template <typename Make>
const Value& Concatenation::hold(Make&& make) {
  Value* place = &held_[heldCount_];
  new (place) Value(make());  // NOLINT(cppcoreguidelines-owning-memory): the array's memory
  ++heldCount_;
  return *place;
}

Value Concatenation::textSoFar() {
  return context_.concatenate(value_.take<String>(), std::span(texts_.data(), textCount_));
}

void Concatenation::fail(const ADMEvaluationBinaryOperation& operation) {
  textCount_ = 0;
  value_ = failWithWrongTypes(operation, context_);
}

}  // namespace commandfilter
