#include "evaluation/CompiledMacros.h"

#include "evaluation/ADMEvaluationContextBase.h"

namespace commandfilter {

constinit const Class CompiledMacros::kClass{.name = "CompiledMacros", .base = &Object::kClass};

Ref<CompiledMacros> CompiledMacros::create() { return make<CompiledMacros>(); }

const CompiledMacro& CompiledMacros::macroForExpression(const String& expression) {
  const auto found = macros_.find(&expression);
  if (found != macros_.end()) return found->second;
  // A context of its own catches the error, which is then recorded wherever the macro is called.
  const Ref<ADMEvaluationContextBase> context =
      ADMEvaluationContextBase::initWithStatusService_globalConfiguration(Value(), nullptr);
  Ref<ADMEvaluationProcessor> processor =
      ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
          Ref<String>(const_cast<String&>(expression)), context);  // NOLINT: shared, not changed
  return macros_
      .emplace(&expression, CompiledMacro{std::move(processor),
                                          RefPtr<ADMEvaluationError>(context->lastError())})
      .first->second;
}

}  // namespace commandfilter
