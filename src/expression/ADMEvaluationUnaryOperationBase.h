// Items with one operand.
#pragma once

#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"

namespace commandfilter {

/// An operator or call with one operand, which the compiler sets.
class COMMANDFILTER_EXPORT ADMEvaluationUnaryOperationBase : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// nil until the compiler has linked the tree. Borrowed.
  [[nodiscard]] ADMEvaluationItemBase* operand() const noexcept { return operand_.get(); }
  void setOperand(RefPtr<ADMEvaluationItemBase> operand) noexcept {
    operand_ = std::move(operand);
    operandsChanged();
  }
  bool pushToStack(ADMEvaluationStack& stack) override;

 protected:
  using ADMEvaluationItemBase::ADMEvaluationItemBase;
  ~ADMEvaluationUnaryOperationBase() override = default;

 private:
  /// Called with each new operand.
  virtual void operandsChanged() noexcept {}

  RefPtr<ADMEvaluationItemBase> operand_;
};

}  // namespace commandfilter
