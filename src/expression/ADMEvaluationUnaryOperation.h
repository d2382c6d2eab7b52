// The operator with one operand.
#pragma once

#include "expression/ADMEvaluationUnaryOperationBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// "not": YES for nil, the opposite of a boolean, nil for anything else.
class COMMANDFILTER_EXPORT ADMEvaluationUnaryOperation final
    : public ADMEvaluationUnaryOperationBase {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationUnaryOperation> itemWithOperationType(ItemType type) {
    return make<ADMEvaluationUnaryOperation>(type);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  using ADMEvaluationUnaryOperationBase::ADMEvaluationUnaryOperationBase;
  ~ADMEvaluationUnaryOperation() override = default;
};

}  // namespace commandfilter
