#include "expression/ADMEvaluationUnaryOperation.h"

#include "expression/EvaluationFailure.h"
#include "expression/TreePrinter.h"
#include "runtime/StackGuard.h"

namespace commandfilter {

constinit const Class ADMEvaluationUnaryOperation::kClass{
    .name = "ADMEvaluationUnaryOperation", .base = &ADMEvaluationUnaryOperationBase::kClass};

Value ADMEvaluationUnaryOperation::evaluate(ADMEvaluationContext& context) const {
  if (type() != ItemType::Not) {
    return fail(*this, context, ErrorCategory::Runtime, "Incorrect unary operation");
  }
  StackGuard::check();
  const Value value = operand() != nullptr ? operand()->evaluate(context) : Value();
  if (value.isNil()) return Value::boolean(true);
  if (value.isBoolean()) return Value::boolean(!value.number().boolValue());
  return {};
}

void ADMEvaluationUnaryOperation::print(TreePrinter& printer) const {
  printer.append("(!").appendItem(operand()).append(")");
}

}  // namespace commandfilter
