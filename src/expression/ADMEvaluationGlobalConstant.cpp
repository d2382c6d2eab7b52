#include "expression/ADMEvaluationGlobalConstant.h"

#include "expression/TreePrinter.h"
#include "runtime/Dictionary.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"

namespace commandfilter {

constinit const Class ADMEvaluationGlobalConstant::kClass{.name = "ADMEvaluationGlobalConstant",
                                                          .base = &ADMEvaluationItemBase::kClass};

Ref<ADMEvaluationGlobalConstant> ADMEvaluationGlobalConstant::itemWithName(Ref<String> name) {
  return make<ADMEvaluationGlobalConstant>(std::move(name));
}

Value ADMEvaluationGlobalConstant::evaluate(ADMEvaluationContext& context) const {
  const Dictionary* configuration = context.globalConfiguration();
  if (configuration == nullptr) return {};
  static const Selector kValueOfConstant("valueOfConstant:");
  return send(configuration->objectForKey("TemplateConstants"), kValueOfConstant, {name_});
}

void ADMEvaluationGlobalConstant::print(TreePrinter& printer) const {
  printer.append("$").append(name_->view());
}

}  // namespace commandfilter
