// Comparing collections that share parts.
#pragma once

#include "runtime/Object.h"

namespace commandfilter {

/// One pair of collections that is being compared, and with it the pairs inside. Values that were
/// built from themselves a few dozen times hold a part more often than any computer can count, so
/// in a long comparison a pair that was found equal is not compared again.
class CollectionComparison {
 public:
  /// Both must live as long as the comparison.
  CollectionComparison(const Object& left, const Object& right) noexcept;
  CollectionComparison(const CollectionComparison&) = delete;
  CollectionComparison& operator=(const CollectionComparison&) = delete;
  /// The outermost comparison forgets all pairs.
  ~CollectionComparison();

  /// Whether this pair was found equal within the outermost comparison that is under way.
  [[nodiscard]] bool isKnownEqual() const;
  /// Remembers what was found, and gives it back.
  [[nodiscard]] bool concluded(bool equal) const;

 private:
  const Object& left_;
  const Object& right_;
};

}  // namespace commandfilter
