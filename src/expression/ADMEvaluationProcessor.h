// An expression, compiled and ready to be evaluated.
#pragma once

#include <utility>

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Compiles one expression when it is made and evaluates it as often as asked.
class COMMANDFILTER_EXPORT ADMEvaluationProcessor final : public Object {
 public:
  static const Class kClass;

  /// A processor for the expression, also when it does not compile: then the context has the
  /// error and there is no root item.
  [[nodiscard]] static Ref<ADMEvaluationProcessor> processorWithExpressionString_evaluationContext(
      Ref<String> expression, Ref<ADMEvaluationContext> context);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// Compiles the expression unless one has been compiled already. Errors go to the context.
  void compileExpression(const Ref<String>& expression);
  /// Evaluates the whole tree; nil when there is none.
  /// @throws Exception whatever services and plug-ins raise, and for a tree deeper than the stack
  /// allows.
  [[nodiscard]] Value execute() const { return executeWithContext(*context_); }
  /// Evaluates the tree against another context.
  /// @throws Exception as `execute` does.
  [[nodiscard]] Value executeWithContext(ADMEvaluationContext& context) const;

  /// The root of the tree; nil when the expression did not compile. Borrowed.
  [[nodiscard]] const ADMEvaluationItemBase* rootItem() const noexcept { return rootItem_.get(); }
  /// The same, shared, for tools that change the tree, such as to watch its evaluation.
  [[nodiscard]] const RefPtr<ADMEvaluationItemBase>& sharedRootItem() const noexcept {
    return rootItem_;
  }
  /// Puts another item in the place of the root.
  void setRootItem(RefPtr<ADMEvaluationItemBase> item) noexcept { rootItem_ = std::move(item); }
  [[nodiscard]] const Ref<String>& expressionString() const noexcept { return expressionString_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMEvaluationProcessor(Ref<String> expression, Ref<ADMEvaluationContext> context);
  ~ADMEvaluationProcessor() override = default;

  void compile();
  /// Executes an expression without a root, or in a context that has an error already.
  [[nodiscard]] Value executeBesideError(ADMEvaluationContext& context) const;

  RefPtr<ADMEvaluationItemBase> rootItem_;
  Ref<ADMEvaluationContext> context_;
  Ref<String> expressionString_;
};

}  // namespace commandfilter
