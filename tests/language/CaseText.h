// Text with escapes, as the case files write it between quotes.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace commandfilter::testing {

/// What is wrong with the form of a case file, without the place.
class CaseSyntaxError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws CaseSyntaxError unless all escapes of the text are well formed. The text stays as it is:
/// a few bytes may stand for many megabytes.
void checkEscapes(std::string_view text);

/// The text with its escapes replaced: \n, \t, \r, a backslash before any other punctuation, \u{41}
/// for a character, \3{ab} for "ababab".
[[nodiscard]] std::string withoutEscapes(std::string_view text);

/// The text between quotes, with escapes, so that it stands on one line and shows every character.
[[nodiscard]] std::string inQuotes(std::string_view text);

/// The text on one line, with its middle left out when it is long.
[[nodiscard]] std::string shortened(std::string_view text);

/// The text without blanks and tabs at both ends.
[[nodiscard]] std::string_view stripped(std::string_view text) noexcept;

/// Where the closing quote stands when an opening one stands at `begin`.
/// @throws CaseSyntaxError when there is none.
[[nodiscard]] std::size_t closingQuote(std::string_view text, std::size_t begin, char quote);

}  // namespace commandfilter::testing
