#include "evaluation/PartialResult.h"

namespace commandfilter {

constinit const Class PartialResult::kClass{.name = "PartialResult", .base = &Object::kClass};
constinit const Class CollectedElements::kClass{.name = "CollectedElements",
                                                .base = &PartialResult::kClass};

Ref<Array> PartialResult::elementsSoFar() {
  if (!elementsSoFar_) elementsSoFar_ = Array::create(copyElements());
  return Ref<Array>(*elementsSoFar_);
}

Ref<CollectedElements> CollectedElements::create() { return make<CollectedElements>(); }

Ref<CollectedElements> CollectedElements::create(Ref<Array> elements) {
  return make<CollectedElements>(std::move(elements));
}

void CollectedElements::append(Value element) {
  forgetElementsSoFar();
  elements_.push_back(std::move(element));
}

Ref<Array> CollectedElements::takeElements() {
  return isShown() ? elementsSoFar() : Array::create(std::move(elements_));
}

}  // namespace commandfilter
