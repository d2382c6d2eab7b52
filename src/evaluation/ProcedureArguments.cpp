#include "evaluation/ProcedureArguments.h"

#include <utility>

#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

RefPtr<Array> elementsOf(const Value& collection) {
  const auto* dictionary = castTo<Dictionary>(collection);
  if (dictionary == nullptr) return RefPtr<Array>(castTo<Array>(collection));
  ValueVector values;
  values.reserve(dictionary->count());
  for (const DictionaryEntry& entry : *dictionary) values.push_back(entry.value);
  return Array::create(std::move(values));
}

}  // namespace commandfilter
