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
      : literal_(operand != nullptr ? literalOf(*operand) : nullptr),
        own_(operand == nullptr || literal_ != nullptr ? Value() : operand->evaluate(context)) {}
  OperandValue(const OperandValue&) = delete;
  OperandValue& operator=(const OperandValue&) = delete;

  [[nodiscard]] const Value& operator*() const noexcept {
    return literal_ != nullptr ? literal_->value() : own_;
  }
  [[nodiscard]] const Value* operator->() const noexcept { return &**this; }

 private:
  const LiteralItem* literal_;
  Value own_;
};

}  // namespace commandfilter
