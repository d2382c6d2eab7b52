#include "expression/ADMEvaluationItemBase.h"

#include <string>

#include "expression/ADMEvaluationStack.h"
#include "expression/OperandValue.h"
#include "expression/TreePrinter.h"
#include "runtime/Exception.h"

namespace commandfilter {

constinit const Class ADMEvaluationItemBase::kClass{.name = "ADMEvaluationItemBase",
                                                    .base = &Object::kClass};

Value ADMEvaluationItemBase::evaluate(ADMEvaluationContext& /*context*/) const {
  throw Exception(std::string(classInfo().name) + ": unrecognized selector evaluate:");
}

bool ADMEvaluationItemBase::pushToStack(ADMEvaluationStack& stack) {
  stack.push(Ref<ADMEvaluationItemBase>(*this));
  return true;
}

void ADMEvaluationItemBase::appendDescription(std::string& text, int /*level*/) const {
  text.append(printedTree(*this));
}

Value evaluateItem(const Value& item, ADMEvaluationContext& context) {
  return evaluateOperand(&itemOf(item), context);
}

void detail::throwNoItem() { throw Exception("an argument is no item of an expression"); }

}  // namespace commandfilter
