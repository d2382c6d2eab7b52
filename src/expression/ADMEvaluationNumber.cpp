#include "expression/ADMEvaluationNumber.h"

#include "expression/TreePrinter.h"
#include "runtime/Description.h"

namespace commandfilter {

constinit const Class ADMEvaluationNumber::kClass{.name = "ADMEvaluationNumber",
                                                  .base = &ADMEvaluationItemBase::kClass};

Ref<ADMEvaluationNumber> ADMEvaluationNumber::itemWithNumber(const Number& number) {
  return make<ADMEvaluationNumber>(number);
}

Value ADMEvaluationNumber::evaluate(ADMEvaluationContext& /*context*/) const { return number_; }

void ADMEvaluationNumber::print(TreePrinter& printer) const {
  printer.append(descriptionOf(number_));
}

}  // namespace commandfilter
