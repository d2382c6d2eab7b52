#include "evaluation/ValuesByName.h"

#include "evaluation/ProcedureArguments.h"
#include "runtime/Cast.h"
#include "runtime/KeyValueLookup.h"
#include "runtime/String.h"

namespace commandfilter {

const Value& configured(const ADMEvaluationContext& context, std::string_view key) {
  static constexpr Value kNone;
  const Dictionary* configuration = context.globalConfiguration();
  return configuration != nullptr ? configuration->objectForKey(key) : kNone;
}

Value valueByName(ADMEvaluationContextBase& context, const Array* items,
                  const ArgumentCount& accepted, std::string_view key,
                  std::string_view wrongNumber) {
  if (!accepted.accepts(countOf(items))) return failWith(context, wrongNumber);
  const Value value = evaluateArgument(items, 0, context);
  const auto* name = castTo<String>(value);
  if (name == nullptr || name->isEmpty()) return {};
  return valueForKey(configured(context, key), *name);
}

}  // namespace commandfilter
