#include "evaluation/PartialResult.h"

#include "runtime/ArrayExtension.h"

namespace commandfilter {

constinit const Class PartialResult::kClass{.name = "PartialResult", .base = &Object::kClass};
constinit const Class CollectedElements::kClass{.name = "CollectedElements",
                                                .base = &PartialResult::kClass};

Ref<CollectedElements> CollectedElements::create() { return create(Array::create()); }

Ref<CollectedElements> CollectedElements::create(Ref<Array> elements) {
  return make<CollectedElements>(std::move(elements));
}

void CollectedElements::append(Value element) {
  const std::size_t end = elements_->count();
  elements_ = arrayWithElementAt(std::move(elements_), end, std::move(element));
}

}  // namespace commandfilter
