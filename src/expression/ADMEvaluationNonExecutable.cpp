#include "expression/ADMEvaluationNonExecutable.h"

#include "expression/EvaluationFailure.h"
#include "expression/TreePrinter.h"

namespace commandfilter {

constinit const Class ADMEvaluationNonExecutable::kClass{.name = "ADMEvaluationNonExecutable",
                                                         .base = &ADMEvaluationItemBase::kClass};

Value ADMEvaluationNonExecutable::evaluate(ADMEvaluationContext& context) const {
  return fail(*this, context, ErrorCategory::Structural, "Evaluating item with type: %d",
              codeOf(type()));
}

void ADMEvaluationNonExecutable::print(TreePrinter& printer) const {
  switch (type()) {
    case ItemType::OpeningBrace:
      printer.append("(");
      break;
    case ItemType::ClosingBrace:
      printer.append(")");
      break;
    default:
      printer.append("()");
      break;
  }
}

}  // namespace commandfilter
