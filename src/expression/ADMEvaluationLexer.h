// Cuts an expression into items.
#pragma once

#include <cstddef>

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/ItemReader.h"
#include "expression/ItemType.h"
#include "expression/Token.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// Reads one expression from start to end. A lexical error is recorded on the context and ends the
/// items.
class COMMANDFILTER_EXPORT ADMEvaluationLexer final : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationLexer> initWithExpressionString_evaluationContext(
      Ref<String> expression, Ref<ADMEvaluationContext> context);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The next item; nil at the end of the expression and after an error.
  [[nodiscard]] RefPtr<ADMEvaluationItemBase> nextItem();
  /// The next item as a token, for who does not need each as an object. False at the end of the
  /// expression and after an error.
  [[nodiscard]] bool nextToken(Token& token);
  /// The item of a token of this lexer.
  [[nodiscard]] Ref<ADMEvaluationItemBase> itemOf(const Token& token) const {
    return reader_.itemOf(token);
  }

  /// How many code units have been read, one more once the end has been read.
  [[nodiscard]] std::size_t currentPosition() const noexcept { return reader_.tokens().position(); }
  /// The type of the item that was returned last.
  [[nodiscard]] ItemType previousType() const noexcept { return reader_.tokens().previousType(); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMEvaluationLexer(Ref<String> expression, Ref<ADMEvaluationContext> context);
  ~ADMEvaluationLexer() override = default;

  Ref<String> expressionString_;
  ItemReader reader_;
  Ref<ADMEvaluationContext> context_;
};

}  // namespace commandfilter
