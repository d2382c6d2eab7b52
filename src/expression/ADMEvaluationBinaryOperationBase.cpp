#include "expression/ADMEvaluationBinaryOperationBase.h"

#include <utility>

#include "expression/ADMEvaluationStack.h"

namespace commandfilter {

constinit const Class ADMEvaluationBinaryOperationBase::kClass{
    .name = "ADMEvaluationBinaryOperationBase", .base = &ADMEvaluationItemBase::kClass};

bool ADMEvaluationBinaryOperationBase::pushToStack(ADMEvaluationStack& stack) {
  RefPtr<ADMEvaluationItemBase> right = stack.take();
  // What was taken is lost with the operator.
  if (!right) return false;
  RefPtr<ADMEvaluationItemBase> left = stack.exchangeTop(Ref<ADMEvaluationItemBase>(*this));
  if (!left) return false;
  leftOperand_ = std::move(left);
  rightOperand_ = std::move(right);
  operandsChanged();
  return true;
}

}  // namespace commandfilter
