#include "expression/ADMEvaluationNumber.h"

#include "expression/TreePrinter.h"
#include "runtime/Description.h"

namespace commandfilter {

constinit const Class ADMEvaluationNumber::kClass{.name = "ADMEvaluationNumber",
                                                  .base = &ADMEvaluationItemBase::kClass};

Ref<ADMEvaluationNumber> ADMEvaluationNumber::itemWithNumber(const Number& number) {
  return make<ADMEvaluationNumber>(number);
}

void ADMEvaluationNumber::print(TreePrinter& printer) const {
  printer.append(descriptionOf(value()));
}

}  // namespace commandfilter
