#include "runtime/Array.h"

#include <algorithm>
#include <array>
#include <string>

#include "runtime/Class.h"
#include "runtime/CollectionComparison.h"
#include "runtime/Comparison.h"
#include "runtime/Description.h"
#include "runtime/Exception.h"
#include "runtime/SizeLimits.h"
#include "runtime/StackGuard.h"

namespace commandfilter {

namespace {

std::uint64_t countOf(const Array& receiver) { return receiver.count(); }
Value objectAtIndex(const Array& receiver, std::uint64_t index) {
  return receiver.objectAtIndex(index);
}

constexpr std::array kArrayMethods{
    method<&countOf>("count"),
    method<&objectAtIndex>("objectAtIndex:"),
};

}  // namespace

constinit const Class Array::kClass{
    .name = "Array", .base = &Object::kClass, .methods = kArrayMethods};

Ref<Array> Array::create(ValueVector elements) {
  for (Value& element : elements) {
    if (element.isNil()) element = Value::null();
  }
  return make<Array>(std::move(elements));
}

std::size_t Array::hash() const {
  // A few elements tell most arrays apart; nested collections are left out, however deep they are.
  constexpr std::size_t kTold = 8;
  constexpr std::size_t kPrime = 31;
  std::size_t hash = count();
  for (std::size_t i = 0; i < std::min(count(), kTold); ++i) {
    const Value& element = elements_[i];
    const bool isPlain = element.isNumber() || element.isKind(ObjectKind::String);
    hash = hash * kPrime + (isPlain ? hashOf(element) : 0);
  }
  return hash;
}

bool Array::isEqual(const Value& other) const {
  if (other.object() == this) return true;
  if (!other.isKind(ObjectKind::Array)) return false;
  StackGuard::check();
  const auto& array = static_cast<const Array&>(*other.object());
  const CollectionComparison comparison(*this, array);
  return comparison.isKnownEqual() ||
         comparison.concluded(std::ranges::equal(elements_, array.elements_, equal));
}

void Array::appendDescription(std::string& text, int level) const {
  StackGuard::check();
  checkTextSize(text.size());
  text.append("(\n");
  for (std::size_t i = 0; i < elements_.size(); ++i) {
    appendIndentation(text, level + 1);
    commandfilter::appendDescription(text, elements_[i], level + 1);
    text.append(i + 1 < elements_.size() ? ",\n" : "\n");
  }
  appendIndentation(text, level);
  text.push_back(')');
}

const Value& Array::objectAtIndex(std::size_t index) const {
  if (index >= elements_.size()) {
    throw Exception("index " + std::to_string(index) + " beyond the array's " +
                    std::to_string(elements_.size()) + " elements");
  }
  return elements_[index];
}

bool Array::containsObject(const Value& value) const {
  return std::ranges::any_of(elements_,
                             [&value](const Value& element) { return equal(element, value); });
}

}  // namespace commandfilter
