#include "evaluation/ADMMacrosEvaluationContext.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"

namespace commandfilter {

namespace {

constexpr std::string_view kPrefix = "arg";

RefPtr<Dictionary> configurationOf(const ADMEvaluationContext& context) {
  return RefPtr<Dictionary>(
      const_cast<Dictionary*>(context.globalConfiguration()));  // NOLINT: shared, not changed
}

// The number behind the prefix, as "%d" writes it: no sign, no leading zero.
std::optional<std::size_t> argumentIndex(std::string_view digits) {
  if (digits.empty() || (digits.front() == '0' && digits.size() > 1)) return std::nullopt;
  std::size_t index = 0;
  const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), index);
  if (end.ec != std::errc() || end.ptr != digits.data() + digits.size()) return std::nullopt;
  return index;
}

}  // namespace

constinit const Class ADMMacrosEvaluationContext::kClass{.name = "ADMMacrosEvaluationContext",
                                                         .base = &ADMEvaluationContextBase::kClass};

ADMMacrosEvaluationContext::ADMMacrosEvaluationContext(const Array* arguments,
                                                       Ref<ADMEvaluationContext> parentContext)
    : ADMEvaluationContextBase(parentContext->statusService(), configurationOf(*parentContext),
                               *parentContext),
      parentContext_(std::move(parentContext)) {
  if (arguments == nullptr) return;
  values_.reserve(arguments->count());
  for (const Value& item : *arguments) {
    values_.push_back(evaluateItem(item, *parentContext_).orNull());
  }
}

Ref<ADMMacrosEvaluationContext> ADMMacrosEvaluationContext::contextWithArguments_parentContext(
    const Array* arguments, Ref<ADMEvaluationContext> parentContext) {
  return make<ADMMacrosEvaluationContext>(arguments, std::move(parentContext));
}

Value ADMMacrosEvaluationContext::processSelector(const EvaluationName& name) {
  const std::string_view text = name.text();
  if (!name.string() || !text.starts_with(kPrefix)) return parentContext_->processSelector(name);
  const std::string_view rest = text.substr(kPrefix.size());
  if (const std::optional<std::size_t> index = argumentIndex(rest)) {
    return *index < values_.size() ? values_[*index].nullAsNil() : Value();
  }
  if (rest == "c") return Number::integer(static_cast<std::int32_t>(values_.size()));
  if (rest == "v") {
    if (!allValues_) allValues_ = Array::create(values_);
    return allValues_;
  }
  return {};
}

Value ADMMacrosEvaluationContext::valueForFeaturePathComponents(const Array* components) {
  return parentContext_->valueForFeaturePathComponents(components);
}

void ADMMacrosEvaluationContext::setLastError(RefPtr<ADMEvaluationError> error) {
  parentContext_->setLastError(std::move(error));
}

ADMEvaluationError* ADMMacrosEvaluationContext::recordedError() const {
  return parentContext_->recordedError();
}

Value ADMMacrosEvaluationContext::defaultServiceSymbolValue() {
  auto* parent = castTo<ADMEvaluationContextBase>(&parentContext_->object());
  return parent != nullptr ? parent->defaultServiceSymbolValue() : Value();
}

}  // namespace commandfilter
