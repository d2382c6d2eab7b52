#include "evaluation/ADMArrayEvaluationContext.h"

#include <array>

#include "evaluation/IterationNames.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"

namespace commandfilter {

namespace {

constexpr auto kArrayProtocols = conformances<ADMArrayEvaluationContext, ADMArrayIteration>();
constexpr std::array kInitializers{
    initializer<&ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList>(
        "initWithStatusService:globalConfiguration:elementsList:"),
};

std::uint64_t countOf(const Value& list) {
  if (list.isNil()) return 0;
  if (const auto* array = castTo<Array>(list)) return array->count();
  if (const auto* dictionary = castTo<Dictionary>(list)) return dictionary->count();
  throw Exception("a range is no array");
}

}  // namespace

constinit const Class ADMArrayEvaluationContext::kClass{.name = "ADMArrayEvaluationContext",
                                                        .base = &ADMEvaluationContextBase::kClass,
                                                        .protocols = kArrayProtocols,
                                                        .initializers = kInitializers};

ADMArrayEvaluationContext::ADMArrayEvaluationContext(Value statusService,
                                                     RefPtr<Dictionary> globalConfiguration,
                                                     Value elementsList)
    : Implements(std::move(statusService), std::move(globalConfiguration)),
      elementsList_(std::move(elementsList)),
      listSize_(countOf(elementsList_)) {}

ADMArrayEvaluationContext::ADMArrayEvaluationContext(Value statusService,
                                                     RefPtr<Dictionary> globalConfiguration,
                                                     Value elementsList,
                                                     ADMEvaluationContext& parent)
    : Implements(std::move(statusService), std::move(globalConfiguration), parent),
      elementsList_(std::move(elementsList)),
      listSize_(countOf(elementsList_)) {}

Ref<ADMArrayEvaluationContext>
ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList(
    Value statusService, RefPtr<Dictionary> globalConfiguration, Value elementsList) {
  return make<ADMArrayEvaluationContext>(std::move(statusService), std::move(globalConfiguration),
                                         std::move(elementsList));
}

bool ADMArrayEvaluationContext::iterateNext() {
  ++currentElement_;
  return currentElement_ < listSize_;
}

void ADMArrayEvaluationContext::resetIteration(const Value& list) {
  if (!list.isNil() && !list.isIdenticalTo(elementsList_)) elementsList_ = list;
  listSize_ = countOf(elementsList_);
  currentElement_ = 0;
}

Value ADMArrayEvaluationContext::currentElement() const {
  if (elementsList_.isNil()) return {};
  const auto* array = castTo<Array>(elementsList_);
  if (array == nullptr) throw Exception("a dictionary has no element at an index");
  return currentElement_ < array->count() ? (*array)[currentElement_] : Value();
}

Value ADMArrayEvaluationContext::serviceSymbolForNameImpl(const EvaluationName& name) {
  if (name.selector()) {
    const IterationNames& names = iterationNames();
    const Selector& selector = *name.selector();
    // Without an element the name is still known, and stands for nil.
    if (selector == names.element || selector == names.identifier) return currentElement().orNull();
    if (selector == names.index) return currentIndex();
  }
  return ADMEvaluationContextBase::serviceSymbolForNameImpl(name);
}

Value ADMArrayEvaluationContext::processSelectorImpl(const Selector& selector) {
  if (!commandfilter::respondsToSelector(service(), selector)) return {};
  return performSelector(service(), selector, currentElement());
}

Value ADMArrayEvaluationContext::defaultServiceSymbolValue() { return currentElement(); }

}  // namespace commandfilter
