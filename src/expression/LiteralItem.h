// What texts and numbers in an expression share.
#pragma once

#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Export.h"
#include "runtime/Value.h"

namespace commandfilter {

/// An item whose value is known when it is compiled: a text or a number.
class COMMANDFILTER_EXPORT LiteralItem : public ADMEvaluationItemBase {
 public:
  /// The value, borrowed; nil for an element that a list leaves out.
  [[nodiscard]] const Value& value() const noexcept { return value_; }

  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const final;

 protected:
  LiteralItem(ItemType type, Value value)
      : ADMEvaluationItemBase(type, Holding::NoChain), value_(std::move(value)) {
    isLiteral_ = true;
  }
  ~LiteralItem() override = default;

 private:
  Value value_;
};

/// The item as a literal; nullptr when it is none.
[[nodiscard]] inline const LiteralItem* literalOf(const ADMEvaluationItemBase& item) noexcept {
  return item.isLiteral() ? static_cast<const LiteralItem*>(&item) : nullptr;
}

}  // namespace commandfilter
