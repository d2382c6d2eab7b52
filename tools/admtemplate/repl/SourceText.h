// The text of an expression, in parts.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "evaluation/protocol/SourceRange.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter::tools {

/// Gives the parts of an expression that its items stand for.
class SourceText {
 public:
  explicit SourceText(Ref<String> expression);

  /// The part that a range of 16-bit units covers, on one line. Of a long one, the beginning and
  /// the end.
  [[nodiscard]] std::string part(const SourceRange& range) const;

 private:
  [[nodiscard]] std::size_t byteOfUnit(std::size_t unit) const noexcept;

  Ref<String> expression_;
  /// The byte at which each unit begins; empty when they are the same.
  std::vector<std::size_t> bytes_;
};

}  // namespace commandfilter::tools
