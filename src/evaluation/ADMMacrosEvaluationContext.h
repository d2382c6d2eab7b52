// Contexts of macro bodies.
#pragma once

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ArgumentValues.h"

namespace commandfilter {

/// The body of a macro: its arguments are "arg0", "arg1" and so on, their number "argc" and all of
/// them "argv"; any other name that begins with "arg" is nil, and everything else is the parent's,
/// errors included.
class COMMANDFILTER_EXPORT ADMMacrosEvaluationContext final : public ADMEvaluationContextBase {
 public:
  static const Class kClass;

  /// Evaluates every argument item against the parent, in order, once. nil for no arguments.
  [[nodiscard]] static Ref<ADMMacrosEvaluationContext> contextWithArguments_parentContext(
      const Array* arguments, Ref<ADMEvaluationContext> parentContext);
  /// The same for a parent of this kind, which costs less.
  [[nodiscard]] static Ref<ADMMacrosEvaluationContext> contextWithArguments_calledFrom(
      const Array* arguments, ADMEvaluationContextBase& parentContext);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value processSelector(const EvaluationName& name) override;
  Value valueForFeaturePathComponents(const Array* components) override;
  void setLastError(RefPtr<ADMEvaluationError> error) override;
  [[nodiscard]] ADMEvaluationError* recordedError() const override;
  Value defaultServiceSymbolValue() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  /// The parent is a context of any kind or one of this one's.
  template <typename Context>
  ADMMacrosEvaluationContext(const Array* arguments, Context& parentContext);
  ~ADMMacrosEvaluationContext() override = default;

  /// A context and the object that it is, which holds it: counting that needs no way back.
  struct Answering {
    ADMEvaluationContext& context;
    Ref<Object> object;
  };
  [[nodiscard]] static Answering answeringOf(ADMEvaluationContext& context,
                                             Object& object) noexcept;

  /// The first of the parent and its parents that is not a macro's. A macro leaves everything but
  /// its own arguments to it, so that macros in macros need no walk through all of them.
  Answering answering_;
  ArgumentValues values_;
  /// All values as "argv" gives them; made when it is asked for.
  RefPtr<Array> allValues_;
};

}  // namespace commandfilter
