#include "expression/ADMEvaluationGlobalConstant.h"

#include "expression/TreePrinter.h"
#include "runtime/Dictionary.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"

namespace commandfilter {

constinit const Class ADMEvaluationGlobalConstant::kClass{.name = "ADMEvaluationGlobalConstant",
                                                          .base = &ADMEvaluationItemBase::kClass};

Value ADMEvaluationGlobalConstant::evaluate(ADMEvaluationContext& context) const {
  ADMNamedValues* constants = context.constants();
  if (constants == nullptr) return ask(context);
  const Object* permanence = constants->permanence();
  if (permanence != nullptr && permanence == permanence_.get()) return value_;
  Value value = constants->valueNamed(*name_);
  // An unknown constant may become known.
  if (permanence != nullptr && !value.isNil()) {
    permanence_ = RefPtr<Object>(constants->permanence());
    value_ = value;
  }
  return value;
}

Value ADMEvaluationGlobalConstant::ask(const ADMEvaluationContext& context) const {
  const Dictionary* configuration = context.globalConfiguration();
  if (configuration == nullptr) return {};
  static const Selector kValueOfConstant("valueOfConstant:");
  return send(configuration->objectForKey("TemplateConstants"), kValueOfConstant, {name_});
}

void ADMEvaluationGlobalConstant::print(TreePrinter& printer) const {
  printer.append("$").append(name_->view());
}

}  // namespace commandfilter
