#include "expression/ADMEvaluationGlobalConstant.h"

#include "expression/TreePrinter.h"
#include "runtime/Dictionary.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"

namespace commandfilter {

constinit const Class ADMEvaluationGlobalConstant::kClass{.name = "ADMEvaluationGlobalConstant",
                                                          .base = &ADMEvaluationItemBase::kClass};

namespace {

// A value that holds no other: a list of expressions could hold the item that remembers it. nil is
// asked for again, since an unknown constant may become known.
bool isPlain(const Value& value) { return value.isNumber() || value.isKind(ObjectKind::String); }

}  // namespace

Value ADMEvaluationGlobalConstant::evaluate(ADMEvaluationContext& context) const {
  Object* permanence = context.permanenceOfConstants();
  const bool isKnown = permanence != nullptr && permanence == permanence_.get();
  return isKnown ? value_ : find(context, permanence);
}

// Apart from what is known, which would make room for it whenever it is asked for.
[[gnu::noinline]] Value ADMEvaluationGlobalConstant::find(ADMEvaluationContext& context,
                                                          Object* permanence) const {
  ADMNamedValues* constants = context.constants();
  if (constants == nullptr) return ask(context);
  Value value = constants->valueNamed(*name_);
  if (permanence != nullptr && isPlain(value)) {
    permanence_ = RefPtr<Object>(permanence);
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
