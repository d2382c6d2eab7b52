#include "expression/ADMEvaluationStack.h"

#include <string>

#include "runtime/Array.h"
#include "runtime/Description.h"

namespace commandfilter {

constinit const Class ADMEvaluationStack::kClass{.name = "ADMEvaluationStack",
                                                 .base = &Object::kClass};

ADMEvaluationStack::ADMEvaluationStack() {
  constexpr std::size_t kUsual = 16;
  elements_.reserve(kUsual);
}

Ref<ADMEvaluationStack> ADMEvaluationStack::create() { return make<ADMEvaluationStack>(); }

void ADMEvaluationStack::appendDescription(std::string& text, int level) const {
  const Ref<Array> array = Array::create({elements_.begin(), elements_.end()});
  text.append("Stack: ");
  commandfilter::appendDescription(text, array, level);
}

}  // namespace commandfilter
