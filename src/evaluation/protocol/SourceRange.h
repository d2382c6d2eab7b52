// A place in the text of an expression.
#pragma once

#include <algorithm>
#include <cstddef>

namespace commandfilter {

/// A run of 16-bit code units of an expression, from `begin` up to but not including `end`.
struct SourceRange {
  std::size_t begin = 0;
  std::size_t end = 0;

  [[nodiscard]] bool isEmpty() const noexcept { return begin == end; }
  /// The smallest range that holds both.
  [[nodiscard]] SourceRange unitedWith(const SourceRange& other) const noexcept {
    return {std::min(begin, other.begin), std::max(end, other.end)};
  }
  friend bool operator==(const SourceRange&, const SourceRange&) = default;
};

}  // namespace commandfilter
