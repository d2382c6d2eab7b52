#include "expression/ADMEvaluationOperatorProcedure.h"

#include <utility>

#include "expression/ADMItemsList.h"
#include "expression/EvaluationFailure.h"
#include "expression/ProcedureCall.h"
#include "expression/TreePrinter.h"

namespace commandfilter {

constinit const Class ADMEvaluationOperatorProcedure::kClass{
    .name = "ADMEvaluationOperatorProcedure", .base = &ADMEvaluationBinaryOperationBase::kClass};

RefPtr<Array> ADMEvaluationOperatorProcedure::collectArguments(
    ADMEvaluationContext& context) const {
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(Value::sharing(leftOperand()));
  const ADMEvaluationItemBase* right = rightOperand();
  if (right != nullptr && right->type() == ItemType::MakeList) {
    list->appendItem(right->evaluate(context));
  } else if (right == nullptr || right->type() != ItemType::EmptyArguments) {
    list->appendItem(Value::sharing(right));
  }
  return list->items();
}

Value ADMEvaluationOperatorProcedure::evaluate(ADMEvaluationContext& context) const {
  if (!arguments_) {
    const ADMEvaluationItemBase* left = leftOperand();
    if (left != nullptr && left->type() == ItemType::MakeList) {
      return fail(*this, context, ErrorCategory::Structural, "Applying member proc to the list");
    }
    if (left != nullptr && left->type() == ItemType::EmptyArguments) return {};
    arguments_ = collectArguments(context);
  }
  return callProcedure(*this, context, name_, arguments_.get());
}

void ADMEvaluationOperatorProcedure::print(TreePrinter& printer) const {
  printer.appendMemberCall(*this, name_.text());
}

}  // namespace commandfilter
