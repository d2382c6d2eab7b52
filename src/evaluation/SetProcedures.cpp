// The procedures that combine two lists.
#include <array>
#include <cstddef>
#include <utility>

#include "evaluation/ElementSet.h"
#include "evaluation/ProcedureArguments.h"
#include "evaluation/ProcedureGroups.h"
#include "evaluation/ProcedureSignatures.h"
#include "runtime/Cast.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

// The elements of a list that another one holds, or those that it does not, each once.
Value selectElements(const Array& list, const Array& other, bool held) {
  const ElementSet others(other);
  ElementSet taken;
  ValueVector selected;
  for (const Value& element : list) {
    if (others.contains(element) == held && taken.insert(element)) selected.push_back(element);
  }
  return Array::create(std::move(selected));
}

/// _Exclude(a, b): what is in a and not in b.
Value exclude(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Exclude").accepts(countOf(items)))
    return failWith(context, "Incorrect number of arguments in _Exclude");
  const RefPtr<Array> first = elementsOf(evaluateArgument(items, 0, context));
  const RefPtr<Array> second = elementsOf(evaluateArgument(items, 1, context));
  return first && second ? selectElements(*first, *second, false) : Value();
}

/// _Intersect(a, b): what is in both, in the order of b.
Value intersect(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Intersect").accepts(countOf(items)))
    return failWith(context, "Incorrect number of arguments in _Intersect");
  const RefPtr<Array> first = elementsOf(evaluateArgument(items, 0, context));
  const RefPtr<Array> second = elementsOf(evaluateArgument(items, 1, context));
  return first && second ? selectElements(*second, *first, true) : Value();
}

// An array with elements; dictionaries do not count here, unlike in the other two procedures.
const Array* usableArray(const Value& value) {
  const auto* array = castTo<Array>(value);
  return array != nullptr && !array->isEmpty() ? array : nullptr;
}

/// _Union(a, b): what is in either, a first.
Value unite(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Union").accepts(countOf(items)))
    return failWith(context, "Incorrect number of arguments in _Union");
  Value first = evaluateArgument(items, 0, context);
  Value second = evaluateArgument(items, 1, context);
  const Array* left = usableArray(first);
  const Array* right = usableArray(second);
  if (left == nullptr && right == nullptr) return {};
  // A list that stands alone stays as it is, with its duplicates.
  if (left == nullptr) return second;
  if (right == nullptr) return first;
  ElementSet taken;
  taken.reserve(left->count() + right->count());
  ValueVector united;
  united.reserve(left->count() + right->count());
  for (const Array* side : {left, right}) {
    for (const Value& element : *side) {
      if (taken.insert(element)) united.push_back(element);
    }
  }
  return Array::create(std::move(united));
}

constexpr std::array kMethods{
    method<&exclude>("executeExcludeProcedure:"),
    method<&intersect>("executeIntersectProcedure:"),
    method<&unite>("executeUnionProcedure:"),
};

}  // namespace

constinit const MethodGroup kSetProcedures{"SetProcedures", kMethods};

}  // namespace commandfilter
