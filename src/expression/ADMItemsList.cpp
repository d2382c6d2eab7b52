#include "expression/ADMItemsList.h"

#include "runtime/Cast.h"
#include "runtime/Description.h"

namespace commandfilter {

constinit const Class ADMItemsList::kClass{.name = "ADMItemsList", .base = &Object::kClass};

Ref<ADMItemsList> ADMItemsList::listWithItem(const Value& item) {
  Ref<ADMItemsList> list = create();
  list->appendItem(item);
  return list;
}

Ref<ADMItemsList> ADMItemsList::create() { return make<ADMItemsList>(); }

void ADMItemsList::appendDescription(std::string& text, int level) const {
  if (const RefPtr<Array> array = items()) array->appendDescription(text, level);
}

RefPtr<Array> ADMItemsList::items() const {
  if (!appended_) return nullptr;
  return Array::create(list_);
}

void ADMItemsList::appendItem(const Value& item) {
  appended_ = true;
  if (const auto* other = castTo<ADMItemsList>(item)) {
    // By index, so that a list can be appended to itself.
    const std::size_t count = other->list_.size();
    for (std::size_t i = 0; i < count; ++i) list_.push_back(Value(other->list_[i]));
  } else {
    list_.push_back(item.orNull());
  }
}

Ref<ADMItemsList> ADMItemsList::copyWithZone() const {
  Ref<ADMItemsList> copy = create();
  copy->appendItem(Value::sharing(this));
  return copy;
}

}  // namespace commandfilter
