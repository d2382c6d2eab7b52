#include "evaluation/ADMMacrosEvaluationContext.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"

namespace commandfilter {

constinit const Class ADMMacrosEvaluationContext::kClass{.name = "ADMMacrosEvaluationContext",
                                                         .base = &ADMEvaluationContextBase::kClass};

template <typename Context>
ADMMacrosEvaluationContext::ADMMacrosEvaluationContext(const Array* arguments,
                                                       Context& parentContext)
    : ADMEvaluationContextBase(CalledFrom(), parentContext),
      answering_(answeringOf(parentContext, countedObject(parentContext))) {
  if (arguments == nullptr) return;
  values_.reserve(arguments->count());
  for (const Value& item : *arguments) {
    values_.append([&] { return evaluateItem(item, parentContext); });
  }
}

inline ADMMacrosEvaluationContext::Answering ADMMacrosEvaluationContext::answeringOf(
    ADMEvaluationContext& context, Object& object) noexcept {
  // No class extends this one.
  return &object.classInfo() == &kClass
             ? static_cast<const ADMMacrosEvaluationContext&>(object).answering_
             : Answering{context, Ref<Object>(object)};
}

Ref<ADMMacrosEvaluationContext> ADMMacrosEvaluationContext::contextWithArguments_parentContext(
    const Array* arguments, Ref<ADMEvaluationContext> parentContext) {
  return make<ADMMacrosEvaluationContext>(arguments, *parentContext);
}

Ref<ADMMacrosEvaluationContext> ADMMacrosEvaluationContext::contextWithArguments_calledFrom(
    const Array* arguments, ADMEvaluationContextBase& parentContext) {
  return make<ADMMacrosEvaluationContext>(arguments, parentContext);
}

Value ADMMacrosEvaluationContext::processSelector(const EvaluationName& name) {
  switch (name.symbol()) {
    case EvaluationSymbol::Argument:
      return values_.valueAt(name.argumentIndex());
    case EvaluationSymbol::ArgumentCount:
      return Number::integer(static_cast<std::int32_t>(values_.count()));
    case EvaluationSymbol::ArgumentList:
      if (!allValues_) allValues_ = values_.array();
      return allValues_;
    case EvaluationSymbol::NoArgument:
      return {};
    default:
      return answering_.context.processSelector(name);
  }
}

Value ADMMacrosEvaluationContext::valueForFeaturePathComponents(const Array* components) {
  return answering_.context.valueForFeaturePathComponents(components);
}

void ADMMacrosEvaluationContext::setLastError(RefPtr<ADMEvaluationError> error) {
  answering_.context.setLastError(std::move(error));
}

ADMEvaluationError* ADMMacrosEvaluationContext::recordedError() const {
  return answering_.context.recordedError();
}

Value ADMMacrosEvaluationContext::defaultServiceSymbolValue() {
  auto* parent = castTo<ADMEvaluationContextBase>(answering_.object.get());
  return parent != nullptr ? parent->defaultServiceSymbolValue() : Value();
}

}  // namespace commandfilter
