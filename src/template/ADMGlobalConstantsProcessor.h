// The constants of a template.
#pragma once

#include <vector>

#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "evaluation/protocol/ADMNamedValues.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/TemplateError.h"

namespace commandfilter {

/// Evaluates each constant when it is first asked for, and keeps the result, nil included. A
/// constant sees neither a status service nor the rest of the template, other constants included;
/// so constants cannot refer to each other in a circle.
class COMMANDFILTER_EXPORT ADMGlobalConstantsProcessor final
    : public Implements<Object, ADMNamedValues> {
 public:
  static const Class kClass;

  /// For a dictionary from name to expression, which is not looked at before it is needed. nil is
  /// an empty one.
  [[nodiscard]] static Ref<ADMGlobalConstantsProcessor> initWithGlobalConstantsInfo(
      RefPtr<Dictionary> info);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The constant's value; nil for a nil name, an unknown one, and a constant that failed.
  /// @throws Exception when the constant is no text, and whatever its expression raises; nothing
  /// is kept then.
  Value valueOfConstant(const String* name);
  Value valueNamed(const String& name) override { return valueOfConstant(&name); }
  [[nodiscard]] Object* permanence() const noexcept override { return mark_.get(); }

  /// The constants that failed, in the order in which they were first asked for. They are in no
  /// report of the template's values.
  [[nodiscard]] const std::vector<TemplateError>& errors() const noexcept { return errors_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMGlobalConstantsProcessor(RefPtr<Dictionary> info);
  ~ADMGlobalConstantsProcessor() override = default;

  [[nodiscard]] Value evaluate(const Ref<String>& name, const Ref<String>& expression);

  RefPtr<Dictionary> info_;
  Ref<ADMSingleValueEvaluationContext> context_;
  /// The null object for a constant that is nil.
  Ref<MutableDictionary> evaluatedConstants_;
  std::vector<TemplateError> errors_;
  /// Stands for the constants and refers to none: an expression that remembers a constant keeps it
  /// as well, and may be part of a constant itself.
  Ref<MutableDictionary> mark_ = MutableDictionary::create();
};

}  // namespace commandfilter
