// The base of every item of an expression.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "evaluation/protocol/SourceRange.h"
#include "expression/ItemType.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

class ADMEvaluationStack;
class TreePrinter;

/// An item: a literal, a reference, an operator or a call. Immutable once the compiler has linked
/// it, so that one tree serves any number of evaluations and contexts.
class COMMANDFILTER_EXPORT ADMEvaluationItemBase : public Object {
 public:
  static const Class kClass;
  static constexpr ObjectKind kObjectKind = ObjectKind::EvaluationItem;
  using KindClass = ADMEvaluationItemBase;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// The tree below the item, as an expression with all braces written out.
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] ItemType type() const noexcept { return type_; }
  /// True for a LiteralItem, whatever the type: items can be made with any.
  [[nodiscard]] bool isLiteral() const noexcept { return isLiteral_; }
  /// The item's own token in the source; empty for what the compiler inserted.
  [[nodiscard]] SourceRange sourceRange() const noexcept { return {begin_, end_}; }
  void setSourceRange(const SourceRange& range) noexcept {
    begin_ = static_cast<Place>(std::min<std::size_t>(range.begin, UINT32_MAX));
    end_ = static_cast<Place>(std::min<std::size_t>(range.end, UINT32_MAX));
  }

  /// The item's value; nil without an error when there is none, nil with an error on the context
  /// when the evaluation failed.
  /// @throws Exception for an item without a value of its own, when the tree is deeper than the
  /// stack allows, and whatever services and plug-ins raise.
  [[nodiscard]] virtual Value evaluate(ADMEvaluationContext& context) const;
  /// Puts the item on the compiler's operand stack; an operator first takes its operands from it.
  /// False when they are missing: then the operator is dropped.
  virtual bool pushToStack(ADMEvaluationStack& stack);
  /// Writes the item and what is below it; see TreePrinter.
  virtual void print(TreePrinter& printer) const = 0;

 protected:
  explicit ADMEvaluationItemBase(ItemType type, Holding holding = Holding::Anything) noexcept
      : Object(ObjectKind::EvaluationItem, holding), type_(type) {}
  ~ADMEvaluationItemBase() override = default;

 private:
  friend class LiteralItem;

  // Half the size of a range's own, because there are many items. Places in a text of more than
  // 4 GiB stop there.
  using Place = std::uint32_t;

  bool isLiteral_ = false;
  ItemType type_;
  Place begin_ = 0;
  Place end_ = 0;
};

namespace detail {

[[noreturn]] COMMANDFILTER_EXPORT void throwNoItem();

}  // namespace detail

/// An element of an argument list as the item that it is. Borrowed.
/// @throws Exception when it is no item.
[[nodiscard]] inline const ADMEvaluationItemBase& itemOf(const Value& element) {
  if (!element.isKind(ObjectKind::EvaluationItem)) detail::throwNoItem();
  return static_cast<const ADMEvaluationItemBase&>(*element.object());
}

/// Evaluates an element of an argument list.
/// @throws Exception when it is no item, and whatever its evaluation raises.
[[nodiscard]] COMMANDFILTER_EXPORT Value evaluateItem(const Value& item,
                                                      ADMEvaluationContext& context);

}  // namespace commandfilter
