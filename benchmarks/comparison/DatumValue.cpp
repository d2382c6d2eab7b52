#include "comparison/DatumValue.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/Number.h"
#include "runtime/String.h"

namespace commandfilter::benchmarks {

namespace {

Value dictionaryOf(const Datum::Map& map) {
  DictionaryBuilder builder;
  builder.reserve(map.size());
  for (const auto& [key, value] : map) builder.set(toValue(key), toValue(value));
  return builder.build();
}

}  // namespace

Value toValue(const Datum& datum) {
  if (const auto* string = std::get_if<std::string>(&datum.content)) return String::create(*string);
  if (const auto* integer = std::get_if<std::int64_t>(&datum.content)) {
    return Number::integer(*integer);
  }
  if (const auto* map = std::get_if<Datum::Map>(&datum.content)) return dictionaryOf(*map);
  if (const auto* list = std::get_if<Datum::List>(&datum.content)) {
    ValueVector elements;
    elements.reserve(list->size());
    for (const Datum& element : *list) elements.push_back(toValue(element));
    return Array::create(std::move(elements));
  }
  return {};
}

Datum toDatum(const Value& value) {
  if (value.isNil()) return {};
  if (value.isNumber()) return value.number().longValue();
  if (const auto* string = castTo<String>(value)) return string->text();
  if (const auto* array = castTo<Array>(value)) {
    Datum::List list;
    for (const Value& element : *array) list.push_back(toDatum(element));
    return list;
  }
  if (const auto* dictionary = castTo<Dictionary>(value)) {
    Datum::Map map;
    for (const DictionaryEntry& entry : *dictionary) {
      map.emplace_back(toDatum(entry.key), toDatum(entry.value));
    }
    return map;
  }
  throw std::runtime_error("a result of a kind that is not compared");
}

}  // namespace commandfilter::benchmarks
