#include "expression/ADMEvaluationString.h"

#include "expression/TreePrinter.h"

namespace commandfilter {

constinit const Class ADMEvaluationString::kClass{.name = "ADMEvaluationString",
                                                  .base = &ADMEvaluationItemBase::kClass};

void ADMEvaluationString::print(TreePrinter& printer) const {
  if (const String* text = string()) printer.append("\"").append(text->view()).append("\"");
}

}  // namespace commandfilter
