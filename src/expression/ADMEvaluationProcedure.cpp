#include "expression/ADMEvaluationProcedure.h"

#include <utility>

#include "expression/ADMItemsList.h"
#include "expression/ProcedureCall.h"
#include "expression/TreePrinter.h"
#include "runtime/Cast.h"

namespace commandfilter {

constinit const Class ADMEvaluationProcedure::kClass{
    .name = "ADMEvaluationProcedure", .base = &ADMEvaluationUnaryOperationBase::kClass};

RefPtr<Array> ADMEvaluationProcedure::collectArguments(ADMEvaluationContext& context) const {
  ADMEvaluationItemBase* argument = operand();
  if (argument == nullptr || argument->type() == ItemType::EmptyArguments) return nullptr;
  if (argument->type() != ItemType::MakeList) return Array::create({Value::sharing(argument)});
  const Value list = argument->evaluate(context);
  const auto* items = castTo<ADMItemsList>(list);
  return items != nullptr ? items->items() : nullptr;
}

Value ADMEvaluationProcedure::evaluate(ADMEvaluationContext& context) const {
  if (!arguments_) arguments_ = collectArguments(context);
  return callProcedure(*this, context, name_, arguments_.get());
}

void ADMEvaluationProcedure::print(TreePrinter& printer) const {
  printer.append("_").append(name_.text()).appendArguments(operand());
}

}  // namespace commandfilter
