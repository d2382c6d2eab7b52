#include "expression/ADMEvaluationNumber.h"

#include "expression/TreePrinter.h"
#include "runtime/Description.h"

namespace commandfilter {

constinit const Class ADMEvaluationNumber::kClass{.name = "ADMEvaluationNumber",
                                                  .base = &ADMEvaluationItemBase::kClass};

void ADMEvaluationNumber::print(TreePrinter& printer) const {
  printer.append(descriptionOf(value()));
}

}  // namespace commandfilter
