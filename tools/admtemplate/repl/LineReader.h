// Where the lines of a prompt come from.
#pragma once

#include <optional>
#include <string>

namespace commandfilter::tools {

/// Gives one line after the other.
class LineReader {
 public:
  LineReader() = default;
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;
  virtual ~LineReader() = default;

  /// The next line, without its line feed; none at the end.
  virtual std::optional<std::string> nextLine() = 0;
};

}  // namespace commandfilter::tools
