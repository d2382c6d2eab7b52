#include "ValueJSON.h"

#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Encodings.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Class.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/Number.h"
#include "runtime/StackGuard.h"
#include "runtime/String.h"

namespace commandfilter::tools {

namespace {

using JSON = nlohmann::ordered_json;

JSON numberJSON(const Number& number) {
  if (number.isReal()) return number.doubleValue();
  if (number.encoding() == 'Q') return number.unsignedLongValue();
  const std::int64_t value = number.longValue();
  if (number.isBoolean() && (value == 0 || value == 1)) return value == 1;
  return value;
}

JSON arrayJSON(const Array& array) {
  JSON list = JSON::array();
  for (const Value& element : array) list.push_back(toJSON(element));
  return list;
}

JSON dictionaryJSON(const Dictionary& dictionary) {
  JSON object = JSON::object();
  // The library would look for each key among all before it; here a set does.
  auto& entries =
      static_cast<std::vector<JSON::object_t::value_type>&>(object.get_ref<JSON::object_t&>());
  std::unordered_set<std::string> names;
  for (const DictionaryEntry& entry : dictionary) {
    // Keys of different kinds may have one description; the first stands for all.
    std::string name = descriptionOf(entry.key);
    if (names.insert(name).second) entries.emplace_back(std::move(name), toJSON(entry.value));
  }
  return object;
}

}  // namespace

JSON toJSON(const Value& value) {
  StackGuard::check();
  if (value.isNumber()) return numberJSON(value.number());
  if (const auto* string = castTo<String>(value)) return string->text();
  if (const auto* array = castTo<Array>(value)) return arrayJSON(*array);
  if (const auto* dictionary = castTo<Dictionary>(value)) return dictionaryJSON(*dictionary);
  if (const auto* data = castTo<Data>(value)) return {{"$data", base64(data->bytes())}};
  if (const auto* date = castTo<Date>(value)) {
    return {{"$date", timeInUTC(date->secondsSince1970())}};
  }
  if (const Object* object = value.object()) return {{"$object", object->classInfo().name}};
  return nullptr;
}

}  // namespace commandfilter::tools
