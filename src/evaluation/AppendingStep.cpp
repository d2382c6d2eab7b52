#include "evaluation/AppendingStep.h"

#include "expression/ADMEvaluationBinaryOperation.h"
#include "expression/ADMEvaluationSelector.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/SizeLimits.h"
#include "runtime/String.h"

namespace commandfilter {

std::optional<AppendingStep> AppendingStep::ofItem(const ADMEvaluationItemBase& item) {
  std::vector<const ADMEvaluationItemBase*> values;
  const ADMEvaluationItemBase* left = &item;
  while (const auto* operation =
             ADMEvaluationBinaryOperation::ofType(left, ItemType::Concatenate)) {
    if (operation->rightOperand() == nullptr) return std::nullopt;
    values.push_back(operation->rightOperand());
    left = operation->leftOperand();
  }
  if (values.empty() || left == nullptr || &left->classInfo() != &ADMEvaluationSelector::kClass) {
    return std::nullopt;
  }
  const auto& name = static_cast<const ADMEvaluationSelector&>(*left);
  if (textOf(name.selectorName().get()) != "initial") return std::nullopt;
  return AppendingStep(std::move(values));
}

void AppendingStep::evaluate(ADMEvaluationContext& context, std::size_t count,
                             ValueVector& additions) const {
  for (auto item = values_.rbegin(); item != values_.rend(); ++item) {
    Value value = (*item)->evaluate(context);
    if (const auto* array = castTo<Array>(value)) {
      checkArraySize(count + additions.size() + array->count());
      additions.insert(additions.end(), array->begin(), array->end());
    } else if (!value.isNil()) {
      checkArraySize(count + additions.size() + 1);
      additions.push_back(std::move(value));
    }
  }
}

}  // namespace commandfilter
