// Steps of aggregations that make an array longer.
#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

/// A step that puts values behind the accumulator, "@initial + a + b". When that is an array, it
/// can grow instead of being copied at every step.
class AppendingStep {
 public:
  /// None for any other step.
  [[nodiscard]] static std::optional<AppendingStep> ofItem(const ADMEvaluationItemBase& item);

  /// Evaluates the values in their order; puts what belongs behind an array of `count` elements
  /// into `additions`.
  /// @throws Exception "a value is too large" when the array would be.
  void evaluate(ADMEvaluationContext& context, std::size_t count, ValueVector& additions) const;

 private:
  explicit AppendingStep(std::vector<const ADMEvaluationItemBase*> values) noexcept
      : values_(std::move(values)) {}

  /// Borrowed from the step; the last one first.
  std::vector<const ADMEvaluationItemBase*> values_;
};

}  // namespace commandfilter
