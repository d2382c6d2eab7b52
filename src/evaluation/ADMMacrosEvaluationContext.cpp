#include "evaluation/ADMMacrosEvaluationContext.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"

namespace commandfilter {

namespace {

RefPtr<Dictionary> configurationOf(const ADMEvaluationContext& context) {
  return RefPtr<Dictionary>(
      const_cast<Dictionary*>(context.globalConfiguration()));  // NOLINT: shared, not changed
}

}  // namespace

constinit const Class ADMMacrosEvaluationContext::kClass{.name = "ADMMacrosEvaluationContext",
                                                         .base = &ADMEvaluationContextBase::kClass};

ADMMacrosEvaluationContext::ADMMacrosEvaluationContext(const Array* arguments,
                                                       Ref<ADMEvaluationContext> parentContext)
    : ADMEvaluationContextBase(parentContext->statusService(), configurationOf(*parentContext),
                               *parentContext),
      answering_(answeringContext(parentContext)) {
  if (arguments == nullptr) return;
  values_.reserve(arguments->count());
  for (const Value& item : *arguments) {
    values_.push_back(evaluateItem(item, *parentContext).orNull());
  }
}

const Ref<ADMEvaluationContext>& ADMMacrosEvaluationContext::answeringContext(
    const Ref<ADMEvaluationContext>& parentContext) noexcept {
  const auto* macro = castTo<ADMMacrosEvaluationContext>(&parentContext->object());
  return macro != nullptr ? macro->answering_ : parentContext;
}

Ref<ADMMacrosEvaluationContext> ADMMacrosEvaluationContext::contextWithArguments_parentContext(
    const Array* arguments, Ref<ADMEvaluationContext> parentContext) {
  return make<ADMMacrosEvaluationContext>(arguments, std::move(parentContext));
}

Value ADMMacrosEvaluationContext::processSelector(const EvaluationName& name) {
  switch (name.symbol()) {
    case EvaluationSymbol::Argument:
      return name.argumentIndex() < values_.size() ? values_[name.argumentIndex()].nullAsNil()
                                                   : Value();
    case EvaluationSymbol::ArgumentCount:
      return Number::integer(static_cast<std::int32_t>(values_.size()));
    case EvaluationSymbol::ArgumentList:
      if (!allValues_) allValues_ = Array::create(values_);
      return allValues_;
    case EvaluationSymbol::NoArgument:
      return {};
    default:
      return answering_->processSelector(name);
  }
}

Value ADMMacrosEvaluationContext::valueForFeaturePathComponents(const Array* components) {
  return answering_->valueForFeaturePathComponents(components);
}

void ADMMacrosEvaluationContext::setLastError(RefPtr<ADMEvaluationError> error) {
  answering_->setLastError(std::move(error));
}

ADMEvaluationError* ADMMacrosEvaluationContext::recordedError() const {
  return answering_->recordedError();
}

Value ADMMacrosEvaluationContext::defaultServiceSymbolValue() {
  auto* parent = castTo<ADMEvaluationContextBase>(&answering_->object());
  return parent != nullptr ? parent->defaultServiceSymbolValue() : Value();
}

}  // namespace commandfilter
