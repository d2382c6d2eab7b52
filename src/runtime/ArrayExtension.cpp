#include "runtime/ArrayExtension.h"

#include <vector>

#include "runtime/Cast.h"

namespace commandfilter {

namespace {

void append(std::vector<Value>& elements, const Value& value) {
  if (const auto* array = castTo<Array>(value)) {
    elements.insert(elements.end(), array->begin(), array->end());
  } else {
    elements.push_back(value.orNull());
  }
}

}  // namespace

Ref<Array> arrayExtendedBy(Value left, const Value& right) {
  auto& array = static_cast<Array&>(*left.object());
  if (array.referenceCount() == 1 && &array != right.object()) {
    append(array.mutableElements(Array::OnlyReference{}), right);
    return Ref<Array>(array);
  }
  const auto* other = castTo<Array>(right);
  std::vector<Value> elements;
  elements.reserve(array.count() + (other != nullptr ? other->count() : 1));
  elements.assign(array.begin(), array.end());
  append(elements, right);
  return Array::create(std::move(elements));
}

}  // namespace commandfilter
