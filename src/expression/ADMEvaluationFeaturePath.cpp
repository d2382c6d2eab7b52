#include "expression/ADMEvaluationFeaturePath.h"

#include "expression/EvaluationFailure.h"
#include "expression/TreePrinter.h"

namespace commandfilter {

constinit const Class ADMEvaluationFeaturePath::kClass{.name = "ADMEvaluationFeaturePath",
                                                       .base = &ADMEvaluationItemBase::kClass};

Ref<ADMEvaluationFeaturePath> ADMEvaluationFeaturePath::itemWithFeaturePathComponents(
    Ref<Array> featurePath) {
  return make<ADMEvaluationFeaturePath>(std::move(featurePath));
}

Value ADMEvaluationFeaturePath::evaluate(ADMEvaluationContext& context) const {
  Value value = context.valueForFeaturePathComponents(featurePath_.get());
  if (value.isNil()) noteFailure(*this, context);
  return value;
}

void ADMEvaluationFeaturePath::print(TreePrinter& printer) const {
  printer.appendFeaturePath(*featurePath_);
}

}  // namespace commandfilter
