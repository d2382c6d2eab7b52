// Items with two operands.
#pragma once

#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"

namespace commandfilter {

/// An operator or call with an operand on each side, which the compiler sets.
class COMMANDFILTER_EXPORT ADMEvaluationBinaryOperationBase : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// nil until the compiler has linked the tree. Borrowed.
  [[nodiscard]] ADMEvaluationItemBase* leftOperand() const noexcept { return leftOperand_.get(); }
  void setLeftOperand(RefPtr<ADMEvaluationItemBase> operand) noexcept {
    leftOperand_ = std::move(operand);
    operandsChanged();
  }
  /// nil until the compiler has linked the tree. Borrowed.
  [[nodiscard]] ADMEvaluationItemBase* rightOperand() const noexcept { return rightOperand_.get(); }
  void setRightOperand(RefPtr<ADMEvaluationItemBase> operand) noexcept {
    rightOperand_ = std::move(operand);
    operandsChanged();
  }
  bool pushToStack(ADMEvaluationStack& stack) override;

 protected:
  using ADMEvaluationItemBase::ADMEvaluationItemBase;
  ~ADMEvaluationBinaryOperationBase() override = default;

 private:
  /// Called with each new operand.
  virtual void operandsChanged() noexcept {}

  RefPtr<ADMEvaluationItemBase> leftOperand_;
  RefPtr<ADMEvaluationItemBase> rightOperand_;
};

}  // namespace commandfilter
