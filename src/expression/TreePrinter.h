// Compiled trees as text.
#pragma once

#include <string>
#include <string_view>

#include "runtime/Array.h"
#include "runtime/Export.h"

namespace commandfilter {

class ADMEvaluationBinaryOperationBase;
class ADMEvaluationItemBase;

/// Writes a tree as an expression of the language with all braces written out, so that the text
/// shows what binds to what and compiles to the same tree again. A broken expression can compile to
/// a tree that no expression stands for, by taking a closing brace that nothing opened, or an
/// element that a list leaves out, for an operand; of such a tree the text shows the pieces.
class COMMANDFILTER_EXPORT TreePrinter {
 public:
  TreePrinter& append(std::string_view text);
  /// An item and what is below it; nothing for nil.
  /// @throws Exception when the tree is deeper than the stack allows.
  TreePrinter& appendItem(const ADMEvaluationItemBase* item);
  /// A call's arguments in braces.
  TreePrinter& appendArguments(const ADMEvaluationItemBase* operand);
  /// An operation with its symbol or word between its operands.
  void appendOperation(const ADMEvaluationBinaryOperationBase& operation);
  /// A member call, with the procedure's name between receiver and arguments.
  void appendMemberCall(const ADMEvaluationBinaryOperationBase& call, std::string_view name);
  void appendFeaturePath(const Array& components);

  [[nodiscard]] const std::string& text() const noexcept { return text_; }

 private:
  void appendList(const ADMEvaluationBinaryOperationBase& list);

  std::string text_;
};

/// The tree below the item as text.
/// @throws Exception when the tree is deeper than the stack allows.
[[nodiscard]] COMMANDFILTER_EXPORT std::string printedTree(const ADMEvaluationItemBase& item);

}  // namespace commandfilter
