// The value of an operation's operand.
#pragma once

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/LiteralItem.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The operand's value as a new handle; nil for a missing operand.
[[nodiscard]] inline Value evaluateOperand(const ADMEvaluationItemBase* operand,
                                           ADMEvaluationContext& context) {
  if (operand == nullptr) return {};
  if (const LiteralItem* literal = literalOf(*operand)) return literal->value();
  return operand->evaluate(context);
}

/// The operand's value to look at. A literal's is borrowed from the item, which saves a call and
/// the counting of a reference.
class OperandValue {
 public:
  [[gnu::always_inline]] OperandValue(const ADMEvaluationItemBase* operand,
                                      ADMEvaluationContext& context)
      : OperandValue(operand, operand != nullptr ? literalOf(*operand) : nullptr, context) {}
  OperandValue(const OperandValue&) = delete;
  OperandValue& operator=(const OperandValue&) = delete;

  [[nodiscard]] const Value& operator*() const noexcept { return value_; }
  [[nodiscard]] const Value* operator->() const noexcept { return &value_; }

 private:
  [[gnu::always_inline]] OperandValue(const ADMEvaluationItemBase* operand,
                                      const LiteralItem* literal, ADMEvaluationContext& context)
      : own_(operand == nullptr || literal != nullptr ? Value() : operand->evaluate(context)),
        value_(literal != nullptr ? literal->value() : own_) {}

  Value own_;
  const Value& value_;
};

}  // namespace commandfilter
