// Contexts of the aggregate procedures.
#pragma once

#include <utility>

#include "evaluation/ADMArrayEvaluationContext.h"

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

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value processSelector(const EvaluationName& name) override;

  [[nodiscard]] const Value& initialValue() const noexcept { return initialValue_; }
  void setInitialValue(Value value) noexcept { initialValue_ = std::move(value); }
  /// The current element as it is stored: the null object stays one.
  [[nodiscard]] Value element() const { return currentElement(); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMAggregateEvaluationContext(Ref<ADMEvaluationContext> parentContext,
                                RefPtr<Dictionary> globalConfiguration, Value elementsList,
                                Value initialValue);
  ~ADMAggregateEvaluationContext() override = default;

  Ref<ADMEvaluationContext> parentContext_;
  Value initialValue_;
};

}  // namespace commandfilter
