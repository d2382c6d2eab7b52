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
  OperandValue(const ADMEvaluationItemBase* operand, ADMEvaluationContext& context) {
    if (operand == nullptr) return;
    if (const LiteralItem* literal = literalOf(*operand)) {
      value_ = &literal->value();
    } else {
      own_ = operand->evaluate(context);
    }
  }
  OperandValue(const OperandValue&) = delete;
  OperandValue& operator=(const OperandValue&) = delete;

  [[nodiscard]] const Value& operator*() const noexcept { return *value_; }
  [[nodiscard]] const Value* operator->() const noexcept { return value_; }

 private:
  Value own_;
  const Value* value_ = &own_;
};

}  // namespace commandfilter
