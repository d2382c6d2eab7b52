#include "expression/ADMEvaluationString.h"

#include "expression/TreePrinter.h"

namespace commandfilter {

constinit const Class ADMEvaluationString::kClass{.name = "ADMEvaluationString",
                                                  .base = &ADMEvaluationItemBase::kClass};

Ref<ADMEvaluationString> ADMEvaluationString::itemWithString(RefPtr<String> string) {
  return make<ADMEvaluationString>(std::move(string));
}

Value ADMEvaluationString::evaluate(ADMEvaluationContext& /*context*/) const { return string_; }

void ADMEvaluationString::print(TreePrinter& printer) const {
  if (string_) printer.append("\"").append(string_->view()).append("\"");
}

}  // namespace commandfilter
