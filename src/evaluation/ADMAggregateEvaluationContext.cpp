#include "evaluation/ADMAggregateEvaluationContext.h"

#include <cstddef>
#include <iterator>

#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Send.h"
#include "runtime/SizeLimits.h"
#include "runtime/StackGuard.h"

namespace commandfilter {

namespace {

// A text or an array as long as it was before it was extended.
Value beginning(const Value& value, std::size_t size) {
  if (const auto* text = castTo<String>(value)) {
    return make<String>(text->view().substr(0, size));
  }
  const auto& array = *castTo<Array>(value);
  return Array::create(
      {array.begin(), std::next(array.begin(), static_cast<std::ptrdiff_t>(size))});
}

}  // namespace

constinit const Class ADMAggregateEvaluationContext::kClass{
    .name = "ADMAggregateEvaluationContext", .base = &ADMArrayEvaluationContext::kClass};

ADMAggregateEvaluationContext::ADMAggregateEvaluationContext(
    Ref<ADMEvaluationContext> parentContext, RefPtr<Dictionary> globalConfiguration,
    Value elementsList, Value initialValue)
    : ADMArrayEvaluationContext(parentContext->statusService(), std::move(globalConfiguration),
                                std::move(elementsList), *parentContext),
      parentContext_(std::move(parentContext)),
      initialValue_(std::move(initialValue)) {}

ADMAggregateEvaluationContext::ADMAggregateEvaluationContext(ADMEvaluationContextBase& parent,
                                                             Value elementsList, Value initialValue)
    : ADMArrayEvaluationContext(CalledFrom(), parent, std::move(elementsList)),
      parentContext_(parent),
      initialValue_(std::move(initialValue)) {}

Ref<ADMAggregateEvaluationContext> ADMAggregateEvaluationContext::contextCalledFrom(
    ADMEvaluationContextBase& parent, Value elementsList, Value initialValue) {
  return make<ADMAggregateEvaluationContext>(parent, std::move(elementsList),
                                             std::move(initialValue));
}

Ref<ADMAggregateEvaluationContext>
ADMAggregateEvaluationContext::initWithParentContext_globalConfiguration_elementsList_initialValue(
    Ref<ADMEvaluationContext> parentContext, RefPtr<Dictionary> globalConfiguration,
    Value elementsList, Value initialValue) {
  return make<ADMAggregateEvaluationContext>(std::move(parentContext),
                                             std::move(globalConfiguration),
                                             std::move(elementsList), std::move(initialValue));
}

Value ADMAggregateEvaluationContext::initialValue() {
  if (partialResult_) return partialResult_->elementsSoFar();
  // It is nil when the memory for the extension was not to be had.
  if (initialSize_ && !initialValue_.isNil()) setInitialValue(valueBeforeTheStep());
  return initialValue_;
}

void ADMAggregateEvaluationContext::setInitialValue(Value value) noexcept {
  partialResult_ = nullptr;
  initialSize_ = std::nullopt;
  replaced_.clear();
  initialValue_ = std::move(value);
}

Value ADMAggregateEvaluationContext::valueBeforeTheStep() const {
  const auto* dictionary = castTo<Dictionary>(initialValue_);
  if (dictionary == nullptr) return beginning(initialValue_, *initialSize_);
  DictionaryBuilder builder;
  // New keys come last.
  for (const DictionaryEntry& entry : *dictionary) {
    if (builder.count() == *initialSize_) break;
    builder.set(entry.key, entry.value);
  }
  for (auto entry = replaced_.rbegin(); entry != replaced_.rend(); ++entry) {
    if (!builder.objectForKey(entry->first).isNil()) builder.set(entry->first, entry->second);
  }
  return builder.build();
}

void ADMAggregateEvaluationContext::setPartialResult(Ref<PartialResult> result) noexcept {
  partialResult_ = std::move(result);
}

Ref<String> ADMAggregateEvaluationContext::concatenate(Ref<String> left,
                                                       std::span<const String* const> others) {
  if (!isOwn(*left)) return ADMArrayEvaluationContext::concatenate(std::move(left), others);
  if (!initialSize_) initialSize_ = left->view().size();
  initialValue_ = nullptr;
  Ref<String> extended = concatenateTexts(std::move(left), others);
  initialValue_ = extended;
  return extended;
}

Ref<Array> ADMAggregateEvaluationContext::extendArray(Value left, const Value& right) {
  if (!isOwn(*left.object())) return ADMArrayEvaluationContext::extendArray(std::move(left), right);
  const std::size_t size = castTo<Array>(left)->count();
  // What raises does it before the accumulator is given up, which is lost when the extension fails.
  const auto* added = castTo<Array>(right);
  checkArraySize(size + (added != nullptr ? added->count() : 1));
  if (!initialSize_) initialSize_ = size;
  initialValue_ = nullptr;
  Ref<Array> extended = arrayExtendedBy(std::move(left), right);
  initialValue_ = extended;
  return extended;
}

Ref<Dictionary> ADMAggregateEvaluationContext::extendDictionary(Value left, Value key,
                                                                Value value) {
  if (!isOwn(*left.object())) {
    return ADMArrayEvaluationContext::extendDictionary(std::move(left), std::move(key),
                                                       std::move(value));
  }
  const auto& dictionary = *castTo<Dictionary>(left);
  // As above: not every object can be a key.
  if (key.isObject() && !key.isKind(ObjectKind::String)) {
    key = key.object()->dictionaryKey();
    static_cast<void>(hashOf(key));
  }
  const Value& before = dictionary.objectForKey(key);
  if (!initialSize_) initialSize_ = dictionary.count();
  if (!before.isNil()) replaced_.emplace_back(key, before);
  initialValue_ = nullptr;
  Ref<Dictionary> extended =
      dictionaryExtendedBy(std::move(left), std::move(key), std::move(value));
  initialValue_ = extended;
  return extended;
}

Value ADMAggregateEvaluationContext::processSelector(const EvaluationName& name) {
  // Nearly every step asks for it.
  if (name.symbol() == EvaluationSymbol::Element) return currentElement();
  return processOtherSelector(name);
}

[[gnu::noinline]] Value ADMAggregateEvaluationContext::processOtherSelector(
    const EvaluationName& name) {
  switch (name.symbol()) {
    case EvaluationSymbol::Index:
      return currentIndex();
    case EvaluationSymbol::Initial:
      return initialValue();
    default:
      break;
  }
  if (name.selector()) {
    // What the service has answered, it need not be asked whether it answers.
    const Value& known = knownAnswerAboutElement(*name.selector());
    if (!known.isNil()) return known.nullAsNil();
    if (commandfilter::respondsToSelector(service(), *name.selector())) {
      return processSelectorImpl(*name.selector());
    }
  }
  // Aggregations inside each other ask one another.
  StackGuard::check();
  return parentContext_->processSelector(name);
}

}  // namespace commandfilter
