// The lines of a file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "check/ByteRange.h"

namespace commandfilter::tools {

/// A place as editors count: lines and characters from 1.
struct LineAndColumn {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// Knows where the lines of a text begin. The text, which is UTF-8, must outlive it.
class FileLines {
 public:
  explicit FileLines(std::string_view text);

  /// Asked for places in their order, it takes as long as reading the text once.
  [[nodiscard]] LineAndColumn placeOf(std::size_t byte);
  /// The line that the range begins in, without blanks at its beginning and only so much of a long
  /// line as fits a screen, and a line with carets below the range; both behind `indent`.
  [[nodiscard]] std::string excerpt(const ByteRange& range, std::string_view indent) const;

 private:
  [[nodiscard]] std::size_t lineOf(std::size_t byte) const;

  std::string_view text_;
  std::vector<std::size_t> begins_;
  // The place that was asked for last.
  std::size_t lastByte_ = 0;
  LineAndColumn last_;
};

/// The same for a line of UTF-8 text that stands alone.
[[nodiscard]] std::string lineExcerpt(std::string_view line, ByteRange range,
                                      std::string_view indent);

}  // namespace commandfilter::tools
