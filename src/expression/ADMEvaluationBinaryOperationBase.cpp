#include "expression/ADMEvaluationBinaryOperationBase.h"

#include <utility>

#include "expression/ADMEvaluationStack.h"

namespace commandfilter {

constinit const Class ADMEvaluationBinaryOperationBase::kClass{
    .name = "ADMEvaluationBinaryOperationBase", .base = &ADMEvaluationItemBase::kClass};

void ADMEvaluationBinaryOperationBase::setLeftOperand(
    RefPtr<ADMEvaluationItemBase> operand) noexcept {
  leftOperand_ = std::move(operand);
}

void ADMEvaluationBinaryOperationBase::setRightOperand(
    RefPtr<ADMEvaluationItemBase> operand) noexcept {
  rightOperand_ = std::move(operand);
}

bool ADMEvaluationBinaryOperationBase::pushToStack(ADMEvaluationStack& stack) {
  RefPtr<ADMEvaluationItemBase> right = stack.take();
  RefPtr<ADMEvaluationItemBase> left = stack.take();
  // What was taken is lost with the operator.
  if (!left || !right) return false;
  setLeftOperand(std::move(left));
  setRightOperand(std::move(right));
  return ADMEvaluationItemBase::pushToStack(stack);
}

}  // namespace commandfilter
