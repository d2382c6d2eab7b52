#include "expression/ADMEvaluationStack.h"

#include <string>

#include "runtime/Array.h"
#include "runtime/Description.h"

namespace commandfilter {

constinit const Class ADMEvaluationStack::kClass{.name = "ADMEvaluationStack",
                                                 .base = &Object::kClass};

Ref<ADMEvaluationStack> ADMEvaluationStack::create() { return make<ADMEvaluationStack>(); }

void ADMEvaluationStack::appendDescription(std::string& text, int level) const {
  const Ref<Array> array = Array::create({elements_.begin(), elements_.end()});
  text.append("Stack: ");
  commandfilter::appendDescription(text, array, level);
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationStack::top() const noexcept {
  return elements_.empty() ? nullptr : RefPtr<ADMEvaluationItemBase>(elements_.back());
}

void ADMEvaluationStack::pop() noexcept {
  if (!elements_.empty()) elements_.pop_back();
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationStack::take() noexcept {
  if (elements_.empty()) return nullptr;
  RefPtr<ADMEvaluationItemBase> item = std::move(elements_.back());
  elements_.pop_back();
  return item;
}

void ADMEvaluationStack::push(RefPtr<ADMEvaluationItemBase> item) {
  if (item) elements_.push_back(Ref<ADMEvaluationItemBase>::adopt(*item.leak()));
}

bool ADMEvaluationStack::pushWithSubtreeCreation(const RefPtr<ADMEvaluationItemBase>& item) {
  return item && item->pushToStack(*this);
}

}  // namespace commandfilter
