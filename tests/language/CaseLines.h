// The lines of a case file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::testing {

/// A line that says something, without the blanks around it.
struct CaseLine {
  std::size_t number;
  /// An indented line belongs to the one above it that is not.
  bool indented;
  std::string text;
};

/// The lines of a text but empty ones and comments, which begin with "#".
[[nodiscard]] std::vector<CaseLine> linesOf(std::string_view text);

/// Takes the next line away from the start of the text.
[[nodiscard]] std::string_view takeLine(std::string_view& text) noexcept;

/// The first word of a text, and what follows it.
struct FirstWord {
  std::string_view word;
  std::string_view rest;
};
[[nodiscard]] FirstWord firstWordOf(std::string_view text) noexcept;

}  // namespace commandfilter::testing
