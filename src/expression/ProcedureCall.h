// What both forms of a procedure call share.
#pragma once

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/EvaluationFailure.h"
#include "runtime/Array.h"
#include "runtime/StackGuard.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Has the context execute the procedure. An error that the procedure records belongs to the call.
[[nodiscard]] inline Value callProcedure(const ADMEvaluationItemBase& item,
                                         ADMEvaluationContext& context, const EvaluationName& name,
                                         const Array* arguments) {
  StackGuard::check();
  Value result = context.executeProcedure_withArguments(name, arguments);
  if (result.isNil()) noteFailure(item, context);
  return result;
}

}  // namespace commandfilter
