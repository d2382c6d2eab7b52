// Which part of an expression's text each item of its tree stands for.
#pragma once

#include <unordered_map>
#include <vector>

#include "evaluation/protocol/SourceRange.h"
#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter::tools {

/// The items of a tree, with what they stand for: an operation for its operands too, and with
/// braces that are all closed.
class SourceExtents {
 public:
  /// Of a tree that was compiled from the expression.
  SourceExtents(const Ref<String>& expression, ADMEvaluationItemBase& root);

  /// All items, each before those below it. Borrowed.
  [[nodiscard]] const std::vector<ADMEvaluationItemBase*>& items() const noexcept { return items_; }
  /// What the item, which must be one of the tree's, stands for.
  [[nodiscard]] SourceRange extentOf(const ADMEvaluationItemBase& item) const {
    return extents_.at(&item);
  }

 private:
  struct Brace {
    std::size_t place = 0;
    /// The place of the brace that belongs to it.
    std::size_t partner = 0;
  };

  void findBraces(const Ref<String>& expression);
  [[nodiscard]] SourceRange withBraces(const std::vector<SourceRange>& parts) const;

  std::vector<ADMEvaluationItemBase*> items_;
  std::unordered_map<const ADMEvaluationItemBase*, SourceRange> extents_;
  std::vector<Brace> braces_;
};

/// The operands of an item that are there, from left to right. Borrowed.
[[nodiscard]] std::vector<ADMEvaluationItemBase*> operandsOf(const ADMEvaluationItemBase& item);

}  // namespace commandfilter::tools
