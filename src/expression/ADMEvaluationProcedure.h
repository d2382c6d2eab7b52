// Procedure calls in prefix form.
#pragma once

#include <utility>

#include "evaluation/protocol/EvaluationName.h"
#include "expression/ADMEvaluationUnaryOperationBase.h"
#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// _Name x, _Name(a, b) or _Name(): hands the unevaluated items to the context's procedure.
class COMMANDFILTER_EXPORT ADMEvaluationProcedure final : public ADMEvaluationUnaryOperationBase {
 public:
  static const Class kClass;

  /// The name is without the leading "_".
  [[nodiscard]] static Ref<ADMEvaluationProcedure> itemWithProcedureName(Ref<String> name) {
    return make<ADMEvaluationProcedure>(std::move(name));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const RefPtr<String>& procedureName() const noexcept { return name_.string(); }
  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationProcedure(Ref<String> name)
      : ADMEvaluationUnaryOperationBase(ItemType::ProcedureCall),
        name_(EvaluationName::ofProcedure(std::move(name))) {}
  ~ADMEvaluationProcedure() override = default;

  void operandsChanged() noexcept override { arguments_ = nullptr; }
  [[nodiscard]] RefPtr<Array> collectArguments(ADMEvaluationContext& context) const;

  EvaluationName name_;
  // The same items at every call, gathered at the first.
  mutable RefPtr<Array> arguments_;
};

}  // namespace commandfilter
