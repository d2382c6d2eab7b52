#include "device/NullMarks.h"

#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/StackGuard.h"

namespace commandfilter::tools {

Value withNullMarks(const Value& value) {
  StackGuard::check();
  if (value.isNull()) {
    DictionaryBuilder mark;
    mark.set("$null", Value::boolean(true));
    return mark.build();
  }
  if (const auto* array = castTo<Array>(value)) {
    ValueVector elements;
    elements.reserve(array->count());
    for (const Value& element : *array) elements.push_back(withNullMarks(element));
    return Array::create(std::move(elements));
  }
  if (const auto* dictionary = castTo<Dictionary>(value)) {
    DictionaryBuilder entries;
    for (const DictionaryEntry& entry : *dictionary) {
      entries.set(entry.key, withNullMarks(entry.value));
    }
    return entries.build();
  }
  return value;
}

}  // namespace commandfilter::tools
