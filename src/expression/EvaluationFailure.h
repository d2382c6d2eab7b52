// How an item records that it failed.
#pragma once

#include <string_view>

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "evaluation/protocol/ADMEvaluationError.h"
#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Records an error of the item on the context; gives nil.
template <typename... Arguments>
[[nodiscard]] Value fail(const ADMEvaluationItemBase& item, ADMEvaluationContext& context,
                         ErrorCategory category, std::string_view format,
                         const Arguments&... arguments) {
  Ref<ADMEvaluationError> error =
      ADMEvaluationError::errorWithCategory_descriptionFormat(category, format, arguments...);
  error->noteSourceRange(item.sourceRange());
  context.setLastError(std::move(error));
  return {};
}

/// After nil from the context: an error that came with it belongs to the item, unless it is an
/// older one or another expression's; these know their expressions already.
inline void noteFailure(const ADMEvaluationItemBase& item, const ADMEvaluationContext& context) {
  ADMEvaluationError* error = context.recordedError();
  if (error != nullptr && !error->expression()) error->noteSourceRange(item.sourceRange());
}

}  // namespace commandfilter
