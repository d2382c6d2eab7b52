#include "expression/ADMEvaluationUnaryOperationBase.h"

#include <utility>

#include "expression/ADMEvaluationStack.h"

namespace commandfilter {

constinit const Class ADMEvaluationUnaryOperationBase::kClass{
    .name = "ADMEvaluationUnaryOperationBase", .base = &ADMEvaluationItemBase::kClass};

bool ADMEvaluationUnaryOperationBase::pushToStack(ADMEvaluationStack& stack) {
  RefPtr<ADMEvaluationItemBase> operand = stack.exchangeTop(Ref<ADMEvaluationItemBase>(*this));
  if (!operand) return false;
  operand_ = std::move(operand);
  operandsChanged();
  return true;
}

}  // namespace commandfilter
