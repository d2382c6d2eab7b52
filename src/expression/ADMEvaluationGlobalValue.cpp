#include "expression/ADMEvaluationGlobalValue.h"

#include "expression/TreePrinter.h"
#include "runtime/Dictionary.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"

namespace commandfilter {

constinit const Class ADMEvaluationGlobalValue::kClass{.name = "ADMEvaluationGlobalValue",
                                                       .base = &ADMEvaluationItemBase::kClass};

Value ADMEvaluationGlobalValue::evaluate(ADMEvaluationContext& context) const {
  if (ADMNamedValues* values = context.templateValues()) return values->valueNamed(*name_);
  const Dictionary* configuration = context.globalConfiguration();
  if (configuration == nullptr) return {};
  static const Selector kValueForKey("valueForKey:");
  return send(configuration->objectForKey("EntireTemplateProcessor"), kValueForKey, {name_});
}

void ADMEvaluationGlobalValue::print(TreePrinter& printer) const {
  printer.append("[").append(name_->view()).append("]");
}

}  // namespace commandfilter
