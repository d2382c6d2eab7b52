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

}  // namespace commandfilter
