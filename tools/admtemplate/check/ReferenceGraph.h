// Which definitions use which.
#pragma once

#include <cstddef>
#include <vector>

#include "evaluation/protocol/SourceRange.h"

namespace commandfilter::tools {

/// A definition that another one uses, and where.
struct Use {
  /// The place of the definition that is used among all.
  std::size_t target;
  /// The place of the expression among all.
  std::size_t site;
  SourceRange range;
  /// True when every evaluation of the user comes by.
  bool isCertain;
};

/// All definitions and what they use.
struct ReferenceGraph {
  explicit ReferenceGraph(std::size_t definitions) : uses(definitions), usesAnyValue(definitions) {}

  /// By definition.
  std::vector<std::vector<Use>> uses;
  /// True for a definition that uses a value whose name is computed.
  std::vector<bool> usesAnyValue;
};

}  // namespace commandfilter::tools
