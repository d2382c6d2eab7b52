// What the procedures do with their arguments.
#pragma once

#include <cstddef>
#include <string_view>

#include "evaluation/ADMEvaluationContextBase.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/OperandValue.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The number of argument items; no items are nil.
[[nodiscard]] inline std::size_t countOf(const Array* items) noexcept {
  return items != nullptr ? items->count() : 0;
}

/// The value of one of the argument items, which must be there.
/// @throws Exception when it is no item, and whatever its evaluation raises.
[[nodiscard]] inline Value evaluateArgument(const Array* items, std::size_t index,
                                            ADMEvaluationContext& context) {
  return evaluateOperand(&itemOf((*items)[index]), context);
}

/// Records the error of a procedure; gives nil.
[[nodiscard]] inline Value failWith(ADMEvaluationContext& context, std::string_view message) {
  context.setRuntimeError(message);
  return {};
}

/// An array itself, the values of a dictionary in its order, nil for anything else.
[[nodiscard]] RefPtr<Array> elementsOf(const Value& collection);

}  // namespace commandfilter
