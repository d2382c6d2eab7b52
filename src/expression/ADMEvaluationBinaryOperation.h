// The operators with two operands.
#pragma once

#include "expression/ADMEvaluationBinaryOperationBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// An operation on two operands; the item's type says which.
class COMMANDFILTER_EXPORT ADMEvaluationBinaryOperation final
    : public ADMEvaluationBinaryOperationBase {
 public:
  static const Class kClass;

  /// What evaluates an operation; a row of the operator table names it.
  using Operation = Value (ADMEvaluationBinaryOperation::*)(ADMEvaluationContext& context) const;

  [[nodiscard]] static Ref<ADMEvaluationBinaryOperation> itemWithOperationType(ItemType type) {
    return make<ADMEvaluationBinaryOperation>(type);
  }

  /// The item as an operation of the type; nullptr for nil and everything else, items of other
  /// classes with the code among it.
  [[nodiscard]] static const ADMEvaluationBinaryOperation* ofType(const ADMEvaluationItemBase* item,
                                                                  ItemType type) noexcept {
    const bool isOne = item != nullptr && item->type() == type && &item->classInfo() == &kClass;
    return isOne ? static_cast<const ADMEvaluationBinaryOperation*>(item) : nullptr;
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

  // The operations. Each evaluates the operands that it needs, left first, and records its errors
  // on the context.

  /// A flat items list of the operands, which are not evaluated.
  [[nodiscard]] Value performMakeListOperation(ADMEvaluationContext& context) const;
  /// The 32-bit and, or, exclusive or of two numbers; nil counts as 0.
  [[nodiscard]] Value performBitOperation(ADMEvaluationContext& context) const;
  /// The order of two numbers as 32-bit integers.
  [[nodiscard]] Value performNumberComparisonOperation(ADMEvaluationContext& context) const;
  [[nodiscard]] Value performUnequalityOperation(ADMEvaluationContext& context) const;
  /// Value equality; nil equals nil only.
  [[nodiscard]] Value performEqualityOperation(ADMEvaluationContext& context) const;
  /// The right value after a YES, the left value after anything else that is true.
  [[nodiscard]] Value performAndOperation(ADMEvaluationContext& context) const;
  /// The first operand that is neither nil nor NO, or the right one.
  [[nodiscard]] Value performOrOperation(ADMEvaluationContext& context) const;
  /// The texts of both operands in one, nil when either is missing.
  [[nodiscard]] Value performConcatIfNotNilOperation(ADMEvaluationContext& context) const;
  /// Arrays and dictionaries extended, everything else as one text.
  [[nodiscard]] Value performConcatOperation(ADMEvaluationContext& context) const;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationBinaryOperation(ItemType type) noexcept;
  ~ADMEvaluationBinaryOperation() override = default;

  [[nodiscard]] bool operandsAreEqual(ADMEvaluationContext& context) const;

  /// What evaluates a code that is no operator's.
  [[nodiscard]] Value failAsUnknown(ADMEvaluationContext& context) const;

  /// The table's operation for the type, kept here because it is needed at every evaluation.
  Operation perform_;
};

}  // namespace commandfilter
