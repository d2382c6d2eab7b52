#include "evaluation/AppendingStep.h"

#include "expression/ADMEvaluationBinaryOperation.h"
#include "expression/ADMEvaluationSelector.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/String.h"

namespace commandfilter {

std::optional<AppendingStep> AppendingStep::ofItem(const Value& item) {
  std::vector<const ADMEvaluationItemBase*> values;
  auto* left = castTo<ADMEvaluationItemBase>(item);
  while (left != nullptr && left->type() == ItemType::Concatenate) {
    const auto* operation = castTo<ADMEvaluationBinaryOperation>(static_cast<Object*>(left));
    if (operation == nullptr || operation->rightOperand() == nullptr) return std::nullopt;
    values.push_back(operation->rightOperand());
    left = operation->leftOperand();
  }
  const auto* name = castTo<ADMEvaluationSelector>(static_cast<Object*>(left));
  if (values.empty() || name == nullptr || textOf(name->selectorName().get()) != "initial") {
    return std::nullopt;
  }
  return AppendingStep(std::move(values));
}

void AppendingStep::evaluate(ADMEvaluationContext& context, std::vector<Value>& additions) const {
  for (auto item = values_.rbegin(); item != values_.rend(); ++item) {
    Value value = (*item)->evaluate(context);
    if (const auto* array = castTo<Array>(value)) {
      additions.insert(additions.end(), array->begin(), array->end());
    } else if (!value.isNil()) {
      additions.push_back(std::move(value));
    }
  }
}

}  // namespace commandfilter
