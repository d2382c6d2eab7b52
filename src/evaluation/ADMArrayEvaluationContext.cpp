#include "evaluation/ADMArrayEvaluationContext.h"

#include <array>

#include "runtime/Cast.h"
#include "runtime/Exception.h"

namespace commandfilter {

namespace {

constexpr auto kArrayProtocols = conformances<ADMArrayEvaluationContext, ADMArrayIteration>();
// Without a list yet, as contexts of any kind can be made.
Ref<ADMArrayEvaluationContext> withoutList(Value statusService,
                                           RefPtr<Dictionary> globalConfiguration) {
  return ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList(
      std::move(statusService), std::move(globalConfiguration), Value());
}

constexpr std::array kInitializers{
    initializer<&withoutList>("initWithStatusService:globalConfiguration:"),
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
    : Implements(std::move(statusService), std::move(globalConfiguration)) {
  setElementsList(std::move(elementsList));
}

ADMArrayEvaluationContext::ADMArrayEvaluationContext(Value statusService,
                                                     RefPtr<Dictionary> globalConfiguration,
                                                     Value elementsList,
                                                     ADMEvaluationContext& parent)
    : Implements(std::move(statusService), std::move(globalConfiguration), parent) {
  setElementsList(std::move(elementsList));
}

ADMArrayEvaluationContext::ADMArrayEvaluationContext(CalledFrom proof,
                                                     ADMEvaluationContextBase& parent,
                                                     Value elementsList)
    : Implements(proof, parent) {
  setElementsList(std::move(elementsList));
}

Ref<ADMArrayEvaluationContext>
ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList(
    Value statusService, RefPtr<Dictionary> globalConfiguration, Value elementsList) {
  return make<ADMArrayEvaluationContext>(std::move(statusService), std::move(globalConfiguration),
                                         std::move(elementsList));
}

void ADMArrayEvaluationContext::setElementsList(Value list) {
  listSize_ = countOf(list);
  elementsList_ = std::move(list);
  array_ = castTo<Array>(elementsList_);
  currentElement_ = 0;
}

void ADMArrayEvaluationContext::resetIteration(const Value& list) {
  setElementsList(list.isNil() ? elementsList_ : list);
}

// Apart from the elements that there are, which would make room for it whenever they are asked for.
[[gnu::cold, gnu::noinline]] const Value& ADMArrayEvaluationContext::missingElement() const {
  static constexpr Value kNone;
  if (array_ == nullptr && !elementsList_.isNil()) {
    throw Exception("a dictionary has no element at an index");
  }
  return kNone;
}

Value ADMArrayEvaluationContext::serviceSymbolForNameImpl(const EvaluationName& name) {
  // A message, as nearly all names are that come here.
  if (name.symbol() == EvaluationSymbol::None) return {};
  switch (name.symbol()) {
    case EvaluationSymbol::Element:
    case EvaluationSymbol::Identifier:
      // Without an element the name is still known, and stands for nil.
      return currentElement().orNull();
    case EvaluationSymbol::Index:
      return currentIndex();
    default:
      return ADMEvaluationContextBase::serviceSymbolForNameImpl(name);
  }
}

Value ADMArrayEvaluationContext::processSelectorImpl(const Selector& selector) {
  return askService(selector, currentElement());
}

Value ADMArrayEvaluationContext::defaultServiceSymbolValue() { return currentElement(); }

}  // namespace commandfilter
