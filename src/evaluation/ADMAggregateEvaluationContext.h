// Contexts of the aggregate procedures.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/PartialResult.h"

namespace commandfilter {

/// Walks over a list with an accumulator, "initial"; every name that it does not know itself is
/// the parent's. Errors stay here, where the procedures look for them.
class COMMANDFILTER_EXPORT ADMAggregateEvaluationContext final : public ADMArrayEvaluationContext {
 public:
  static const Class kClass;

  /// The service is the parent's. Configuration and initial value may be nil.
  [[nodiscard]] static Ref<ADMAggregateEvaluationContext>
  initWithParentContext_globalConfiguration_elementsList_initialValue(
      Ref<ADMEvaluationContext> parentContext, RefPtr<Dictionary> globalConfiguration,
      Value elementsList, Value initialValue);

  /// The same for a parent of this kind, with its configuration, which costs less. Errors of the
  /// expressions that are evaluated for the elements stay in the new context.
  [[nodiscard]] static Ref<ADMAggregateEvaluationContext> contextCalledFrom(
      ADMEvaluationContextBase& parent, Value elementsList, Value initialValue);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value processSelector(const EvaluationName& name) override;
  /// Extends the accumulator in place when nobody else holds it, so that building a text step by
  /// step costs linear time. Until the step's result is set, `initialValue` is what it was.
  Ref<String> concatenate(Ref<String> left, std::span<const String* const> others) override;
  /// Does the same for an array.
  Ref<Array> extendArray(Value left, const Value& right) override;
  /// Does the same for a dictionary.
  Ref<Dictionary> extendDictionary(Value left, Value key, Value value) override;

  /// The accumulator; of a growing list, the elements so far.
  [[nodiscard]] Value initialValue();
  void setInitialValue(Value value) noexcept;
  /// Makes a growing list the accumulator.
  void setPartialResult(Ref<PartialResult> result) noexcept;
  /// The current element as it is stored: the null object stays one.
  [[nodiscard]] Value element() const { return currentElement(); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMAggregateEvaluationContext(Ref<ADMEvaluationContext> parentContext,
                                RefPtr<Dictionary> globalConfiguration, Value elementsList,
                                Value initialValue);
  ADMAggregateEvaluationContext(ADMEvaluationContextBase& parent, Value elementsList,
                                Value initialValue);
  ~ADMAggregateEvaluationContext() override = default;

  /// The value of a name other than "element".
  Value processOtherSelector(const EvaluationName& name);
  /// The accumulator as it was before the step began to extend it.
  [[nodiscard]] Value valueBeforeTheStep() const;
  /// True for the accumulator when this context and the caller hold it and nobody else.
  [[nodiscard]] bool isOwn(const Object& object) const noexcept {
    return &object == initialValue_.object() && object.referenceCount() == 2;
  }

  Ref<ADMEvaluationContext> parentContext_;
  Value initialValue_;
  /// How much of the text or array is the accumulator, when a step has extended it.
  std::optional<std::size_t> initialSize_;
  /// The entries of a dictionary that the step has replaced, as they were.
  std::vector<std::pair<Value, Value>> replaced_;
  /// The accumulator when it is a growing list.
  RefPtr<PartialResult> partialResult_;
};

}  // namespace commandfilter
