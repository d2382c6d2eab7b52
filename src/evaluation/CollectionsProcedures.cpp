// The procedures that build, search and measure arrays and dictionaries.
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "evaluation/ElementSet.h"
#include "evaluation/ProcedureArguments.h"
#include "evaluation/ProcedureGroups.h"
#include "evaluation/ProcedureSignatures.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "runtime/Number.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

constexpr std::string_view kWrongContains = "Incorrect arguments in Contains()";
// The texts name one procedure and serve several; they are part of the contract.
constexpr std::string_view kWrongContainsNumber = "Incorrect arguments number in Contains()";
constexpr std::string_view kWrongGetItemNumber = "Incorrect arguments number in GetItem()";

// The values of a table under the numbers whose bits are all set in the mask.
ValueVector translateMask(std::uint64_t mask, const Dictionary& table) {
  ValueVector translated;
  for (const DictionaryEntry& entry : table) {
    if (!entry.key.isNumber()) continue;
    const std::uint64_t bits = entry.key.number().unsignedLongValue();
    if ((bits & mask) == bits) translated.push_back(entry.value);
  }
  return translated;
}

// The values of a table under each of the codes, which may be missing.
ValueVector translateCodes(const Array& codes, const Dictionary& table) {
  ValueVector translated;
  translated.reserve(codes.count());
  for (const Value& code : codes) {
    const Value& value = table.objectForKey(code);
    if (!value.isNil()) translated.push_back(value);
  }
  return translated;
}

/// _Translate(keys, table): the texts of a bit mask or of a list of codes.
Value translate(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Translate").accepts(countOf(items)))
    return failWith(context, kWrongContainsNumber);
  const Value keys = evaluateArgument(items, 0, context);
  const Value values = evaluateArgument(items, 1, context);
  const auto* table = castTo<Dictionary>(values);
  const auto* codes = castTo<Array>(keys);
  if (table == nullptr || (codes == nullptr && !keys.isNumber())) {
    return failWith(context, kWrongContainsNumber);
  }
  ValueVector translated = codes != nullptr
                               ? translateCodes(*codes, *table)
                               : translateMask(keys.number().unsignedLongValue(), *table);
  return translated.empty() ? Value() : Value(Array::create(std::move(translated)));
}

// Apart, because it is rarely needed.
[[gnu::noinline]] Value evaluateDefault(ADMEvaluationContextBase& context, const Array* items) {
  return countOf(items) < 3 ? Value() : evaluateArgument(items, 2, context);
}

// The last step of both look-ups: what was found, or the default, which is evaluated only then.
Value orDefault(const Value& found, ADMEvaluationContextBase& context, const Array* items) {
  if (found.isNil()) [[unlikely]]
    return evaluateDefault(context, items);
  return found;
}

Value keyOfValue(const Dictionary& dictionary, const Value& value) {
  for (const DictionaryEntry& entry : dictionary) {
    if (equal(entry.value, value)) return entry.key;
  }
  return {};
}

Value indexOfValue(const Array& array, const Value& value) {
  for (std::size_t i = 0; i < array.count(); ++i) {
    if (equal(array[i], value)) return Number::integer(std::uint64_t{i});
  }
  return {};
}

/// _GetKey(container, value [, default]): where a value stands.
Value getKey(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("GetKey").accepts(countOf(items))) return failWith(context, kWrongGetItemNumber);
  const Value container = evaluateArgument(items, 0, context);
  if (container.isNil()) return orDefault(Value(), context, items);
  const auto* dictionary = castTo<Dictionary>(container);
  const auto* array = castTo<Array>(container);
  if (dictionary == nullptr && array == nullptr) return failWith(context, kWrongGetItemNumber);
  const Value value = evaluateArgument(items, 1, context);
  Value found;
  if (!value.isNil()) {
    found = dictionary != nullptr ? keyOfValue(*dictionary, value) : indexOfValue(*array, value);
  }
  return orDefault(found, context, items);
}

// What stands at an index of an array. Apart, because most containers are dictionaries.
[[gnu::noinline]] Value itemAtIndex(ADMEvaluationContextBase& context, const Array* items,
                                    const Value& container) {
  if (container.isNil()) return orDefault(Value(), context, items);
  const auto* array = castTo<Array>(container);
  if (array == nullptr) return failWith(context, kWrongGetItemNumber);
  const Value index = evaluateArgument(items, 1, context);
  // The one miss that the default does not cover.
  if (index.isNil()) return {};
  if (!index.isNumber()) return failWith(context, kWrongGetItemNumber);
  // A negative index is a large one, and misses.
  const std::uint32_t place = index.number().unsignedIntValue();
  return orDefault(place < array->count() ? (*array)[place] : Value(), context, items);
}

/// _GetItem(container, key [, default]): what stands at a key or index.
Value getItem(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("GetItem").accepts(countOf(items)))
    return failWith(context, kWrongGetItemNumber);
  const OperandValue container(&itemOf((*items)[0]), context);
  if (const auto* dictionary = castTo<Dictionary>(*container)) {
    const OperandValue key(&itemOf((*items)[1]), context);
    return orDefault(dictionary->objectForKey(*key), context, items);
  }
  return itemAtIndex(context, items, *container);
}

/// _In(value, candidate, ...): whether a value is one of the candidates.
Value in(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("In").accepts(countOf(items))) return failWith(context, kWrongContainsNumber);
  const Value value = evaluateArgument(items, 0, context);
  for (std::size_t i = 1; i < items->count(); ++i) {
    if (equal(value, evaluateArgument(items, i, context))) return Value::boolean(true);
  }
  return Value::boolean(false);
}

/// _Contains(collection, value, ...): whether a collection holds all the values.
Value contains(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Contains").accepts(countOf(items))) return failWith(context, kWrongContains);
  const RefPtr<Array> elements = elementsOf(evaluateArgument(items, 0, context));
  if (!elements) return failWith(context, kWrongContains);
  // A set is worth its making only when it is asked often.
  constexpr std::size_t kFew = 8;
  std::optional<ElementSet> set;
  if (items->count() > kFew) set.emplace(*elements);
  for (std::size_t i = 1; i < items->count(); ++i) {
    const Value value = evaluateArgument(items, i, context).orNull();
    if (!(set ? set->contains(value) : elements->containsObject(value))) {
      return Value::boolean(false);
    }
  }
  return Value::boolean(true);
}

// The first of the largest elements; nil when there is none or they cannot be ordered.
Value largestOf(const Array& elements) {
  if (elements.isEmpty()) return {};
  const Value* largest = &elements[0];
  try {
    for (const Value& element : elements) {
      if (&element != largest && compare(*largest, element) < 0) largest = &element;
    }
  } catch (const Exception&) {
    return {};
  }
  return *largest;
}

/// _MaxValue(collection): the largest element.
Value maxValue(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("MaxValue").accepts(countOf(items))) return {};
  const RefPtr<Array> elements = elementsOf(evaluateArgument(items, 0, context));
  return elements ? largestOf(*elements) : Value();
}

/// _AllKeys(collection): the keys of a dictionary, the indexes of an array.
Value allKeys(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("AllKeys").accepts(countOf(items))) return {};
  const Value collection = evaluateArgument(items, 0, context);
  ValueVector keys;
  if (const auto* array = castTo<Array>(collection)) {
    keys.reserve(array->count());
    for (std::size_t i = 0; i < array->count(); ++i) {
      keys.emplace_back(Number::integer(static_cast<std::int32_t>(i)));
    }
  } else if (const auto* dictionary = castTo<Dictionary>(collection)) {
    keys.reserve(dictionary->count());
    for (const DictionaryEntry& entry : *dictionary) keys.push_back(entry.key);
  } else {
    return {};
  }
  return Array::create(std::move(keys));
}

/// _GetSize(collection): how many elements or entries it has; 0 for nil.
Value getSize(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("GetSize").accepts(countOf(items))) return {};
  const Value collection = evaluateArgument(items, 0, context);
  if (collection.isNil()) return Number::integer(std::uint64_t{0});
  if (const auto* array = castTo<Array>(collection)) {
    return Number::integer(std::uint64_t{array->count()});
  }
  if (const auto* dictionary = castTo<Dictionary>(collection)) {
    return Number::integer(std::uint64_t{dictionary->count()});
  }
  return {};
}

/// _Dictionary(value, key, ...): a dictionary of pairs, the value first.
Value dictionary(ADMEvaluationContextBase& context, const Array* items) {
  const std::size_t count = countOf(items);
  if (!argumentsOf("Dictionary").accepts(count))
    return failWith(context, "Incorrect arguments number in Dictionary()");
  DictionaryBuilder builder;
  builder.reserve(count / 2);
  for (std::size_t i = 0; i < count; i += 2) {
    Value value = evaluateArgument(items, i, context);
    Value key = evaluateArgument(items, i + 1, context);
    if (!value.isNil() && !key.isNil()) builder.set(std::move(key), std::move(value));
  }
  return builder.build();
}

/// _Array(value, ...): an array of the values that are there.
Value array(ADMEvaluationContextBase& context, const Array* items) {
  ValueVector elements;
  elements.reserve(countOf(items));
  for (std::size_t i = 0; i < countOf(items); ++i) {
    Value element = evaluateArgument(items, i, context);
    if (!element.isNil()) elements.push_back(std::move(element));
  }
  return Array::create(std::move(elements));
}

constexpr std::array kMethods{
    method<&translate>("executeTranslateProcedure:"),
    method<&getKey>("executeGetKeyProcedure:"),
    method<&getItem>("executeGetItemProcedure:"),
    method<&in>("executeInProcedure:"),
    method<&contains>("executeContainsProcedure:"),
    method<&maxValue>("executeMaxValueProcedure:"),
    method<&allKeys>("executeAllKeysProcedure:"),
    method<&getSize>("executeGetSizeProcedure:"),
    method<&dictionary>("executeDictionaryProcedure:"),
    method<&array>("executeArrayProcedure:"),
};

}  // namespace

constinit const MethodGroup kCollectionsProcedures{"CollectionsProcedures", kMethods};

}  // namespace commandfilter
