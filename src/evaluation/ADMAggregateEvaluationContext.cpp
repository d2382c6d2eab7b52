#include "evaluation/ADMAggregateEvaluationContext.h"

#include "evaluation/IterationNames.h"
#include "runtime/Send.h"

namespace commandfilter {

constinit const Class ADMAggregateEvaluationContext::kClass{
    .name = "ADMAggregateEvaluationContext", .base = &ADMArrayEvaluationContext::kClass};

ADMAggregateEvaluationContext::ADMAggregateEvaluationContext(
    Ref<ADMEvaluationContext> parentContext, RefPtr<Dictionary> globalConfiguration,
    Value elementsList, Value initialValue)
    : ADMArrayEvaluationContext(parentContext->statusService(), std::move(globalConfiguration),
                                std::move(elementsList), *parentContext),
      parentContext_(std::move(parentContext)),
      initialValue_(std::move(initialValue)) {}

Ref<ADMAggregateEvaluationContext>
ADMAggregateEvaluationContext::initWithParentContext_globalConfiguration_elementsList_initialValue(
    Ref<ADMEvaluationContext> parentContext, RefPtr<Dictionary> globalConfiguration,
    Value elementsList, Value initialValue) {
  return make<ADMAggregateEvaluationContext>(std::move(parentContext),
                                             std::move(globalConfiguration),
                                             std::move(elementsList), std::move(initialValue));
}

Value ADMAggregateEvaluationContext::processSelector(const EvaluationName& name) {
  if (name.selector()) {
    const IterationNames& names = iterationNames();
    const Selector& selector = *name.selector();
    if (selector == names.element) return currentElement();
    if (selector == names.index) return currentIndex();
    if (selector == names.initial) return initialValue_;
    if (commandfilter::respondsToSelector(service(), selector)) {
      return processSelectorImpl(selector);
    }
  }
  return parentContext_->processSelector(name);
}

}  // namespace commandfilter
