#include "expression/ADMEvaluationSelector.h"

#include "expression/EvaluationFailure.h"
#include "expression/TreePrinter.h"

namespace commandfilter {

constinit const Class ADMEvaluationSelector::kClass{.name = "ADMEvaluationSelector",
                                                    .base = &ADMEvaluationItemBase::kClass};

Value ADMEvaluationSelector::evaluate(ADMEvaluationContext& context) const {
  Value value = context.processSelector(name_);
  if (value.isNil()) noteFailure(*this, context);
  return value;
}

void ADMEvaluationSelector::print(TreePrinter& printer) const {
  printer.append("@").append(name_.text());
}

}  // namespace commandfilter
