// Lines of a script.
#pragma once

#include <istream>
#include <optional>
#include <string>

#include "repl/LineReader.h"

namespace commandfilter::tools {

/// Reads lines from a stream and shows no prompt.
class StreamReader final : public LineReader {
 public:
  /// The stream must outlive the reader.
  explicit StreamReader(std::istream& input) noexcept : input_(input) {}

  std::optional<std::string> nextLine() override {
    std::string line;
    if (!std::getline(input_, line)) return std::nullopt;
    return line;
  }

 private:
  std::istream& input_;
};

}  // namespace commandfilter::tools
