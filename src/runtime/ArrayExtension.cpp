#include "runtime/ArrayExtension.h"

#include <utility>

#include "runtime/Cast.h"
#include "runtime/SizeLimits.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

void append(ValueVector& elements, const Value& value) {
  if (const auto* array = castTo<Array>(value)) {
    checkArraySize(elements.size() + array->count());
    elements.insert(elements.end(), array->begin(), array->end());
  } else {
    checkArraySize(elements.size() + 1);
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
  checkArraySize(array.count() + (other != nullptr ? other->count() : 1));
  ValueVector elements;
  elements.reserve(array.count() + (other != nullptr ? other->count() : 1));
  elements.assign(array.begin(), array.end());
  append(elements, right);
  return Array::create(std::move(elements));
}

Ref<Array> arrayWithElementAt(Ref<Array> array, std::size_t index, Value element) {
  const auto place = static_cast<std::ptrdiff_t>(index);
  if (array->referenceCount() == 1) {
    ValueVector& elements = array->mutableElements(Array::OnlyReference{});
    if (index == elements.size()) {
      // Room for a few spares short lists most of their allocations.
      constexpr std::size_t kFew = 8;
      if (elements.capacity() < kFew) elements.reserve(kFew);
      elements.push_back(element.isNil() ? Value::null() : std::move(element));
    } else {
      elements.insert(elements.begin() + place, element.orNull());
    }
    return array;
  }
  ValueVector elements;
  elements.reserve(array->count() + 1);
  elements.assign(array->begin(), array->begin() + place);
  elements.push_back(element.orNull());
  elements.insert(elements.end(), array->begin() + place, array->end());
  return Array::create(std::move(elements));
}

}  // namespace commandfilter
