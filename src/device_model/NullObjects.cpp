#include "device_model/NullObjects.h"

#include <optional>
#include <utility>
#include <vector>

#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"

namespace commandfilter {

namespace {

// The value with its null objects; none when it has none and can stay as it is. What a property
// list holds is not nested deeply.
std::optional<Value> replaced(const Value& value);

std::optional<Value> replacedArray(const Array& array) {
  std::optional<ValueVector> elements;
  for (std::size_t i = 0; i < array.count(); ++i) {
    std::optional<Value> element = replaced(array[i]);
    if (!element) continue;
    if (!elements) elements.emplace(array.begin(), array.end());
    (*elements)[i] = std::move(*element);
  }
  if (!elements) return std::nullopt;
  return Array::create(std::move(*elements));
}

std::optional<Value> replacedDictionary(const Dictionary& dictionary) {
  if (dictionary.count() == 1 && !dictionary.objectForKey("$null").isNil()) return Value::null();
  std::vector<std::pair<Value, Value>> changes;
  for (const DictionaryEntry& entry : dictionary) {
    if (std::optional<Value> other = replaced(entry.value)) {
      changes.emplace_back(entry.key, std::move(*other));
    }
  }
  if (changes.empty()) return std::nullopt;
  DictionaryBuilder builder;
  for (const DictionaryEntry& entry : dictionary) builder.set(entry.key, entry.value);
  for (auto& [key, value] : changes) builder.set(key, std::move(value));
  return builder.build();
}

std::optional<Value> replaced(const Value& value) {
  if (const auto* dictionary = castTo<Dictionary>(value)) return replacedDictionary(*dictionary);
  if (const auto* array = castTo<Array>(value)) return replacedArray(*array);
  return std::nullopt;
}

}  // namespace

Value withNullObjects(const Value& value) { return replaced(value).value_or(value); }

}  // namespace commandfilter
