// Macros that have been compiled already.
#pragma once

#include <map>

#include "evaluation/protocol/ADMEvaluationError.h"
#include "expression/ADMEvaluationProcessor.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// A macro's expression and what compiling it left behind.
struct CompiledMacro {
  /// The compiled expression; without a root item when it does not compile.
  Ref<ADMEvaluationProcessor> processor;
  /// The error of the compilation, which belongs to every call; nil when there was none.
  RefPtr<ADMEvaluationError> error;
};

/// The macros that the contexts of one evaluation have called. A context and those that are made
/// for its evaluation share one.
class CompiledMacros final : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<CompiledMacros> create();

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// The compiled form of the expression, compiled on the first call.
  [[nodiscard]] const CompiledMacro& macroForExpression(const String& expression);

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  CompiledMacros() = default;
  ~CompiledMacros() override = default;

  // By identity: a template holds each macro's text once, and the processor keeps it alive.
  std::map<const String*, CompiledMacro> macros_;
};

}  // namespace commandfilter
