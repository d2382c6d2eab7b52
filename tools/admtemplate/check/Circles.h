// Definitions that use themselves.
#pragma once

#include <cstddef>
#include <vector>

#include "check/Definitions.h"
#include "check/ReferenceGraph.h"

namespace commandfilter::tools {

/// A way from a definition back to it. Each use belongs to the definition that the one before it
/// names, the first to the one that the last names.
struct Circle {
  std::vector<Use> uses;
  /// True when nothing in it can stop an evaluation.
  bool isCertain;

  [[nodiscard]] std::size_t start() const { return uses.back().target; }
};

/// Circles that every evaluation follows, and those through values that some evaluations may
/// follow. Each is the shortest for one of its definitions, and a definition in a circle is in one
/// of those given, unless there are so many that looking for them would take long. A macro that
/// calls itself under a condition is no circle: it can come to an end.
[[nodiscard]] std::vector<Circle> findCircles(const Definitions& definitions,
                                              const ReferenceGraph& graph);

}  // namespace commandfilter::tools
