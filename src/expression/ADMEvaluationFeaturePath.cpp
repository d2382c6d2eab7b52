#include "expression/ADMEvaluationFeaturePath.h"

#include "expression/EvaluationFailure.h"
#include "expression/TreePrinter.h"

namespace commandfilter {

constinit const Class ADMEvaluationFeaturePath::kClass{.name = "ADMEvaluationFeaturePath",
                                                       .base = &ADMEvaluationItemBase::kClass};

Value ADMEvaluationFeaturePath::evaluate(ADMEvaluationContext& context) const {
  Value value = context.valueForFeaturePathComponents(featurePath_.get());
  if (value.isNil()) noteFailure(*this, context);
  return value;
}

void ADMEvaluationFeaturePath::print(TreePrinter& printer) const {
  printer.appendFeaturePath(*featurePath_);
}

}  // namespace commandfilter
