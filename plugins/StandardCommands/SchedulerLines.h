// Lines as the scheduler reads them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::standard {

/// How long a line may be, in bytes without its end: the scheduler takes what follows for another
/// line, without a prefix.
inline constexpr std::size_t kLongestLine = 2046;

/// The text on one line: characters that control something become blanks, several blanks become
/// one, and there is none at the ends.
[[nodiscard]] std::string singleLine(std::string_view text);

/// The text's beginning, of at most so many bytes, without half a character and without a blank at
/// its end.
[[nodiscard]] std::string_view beginning(std::string_view text, std::size_t bytes) noexcept;

/// `name=` and the values with commas between them, such that the scheduler reads these values. It
/// takes quotes and backslashes away twice: from the option, then from each value of the list.
[[nodiscard]] std::string assignment(std::string_view name, const std::vector<std::string>& values);

/// True for what can be a state reason: letters, digits, `-`, `.` and `_`.
[[nodiscard]] bool isKeyword(std::string_view text) noexcept;

/// True for what can be a keyword or a choice of a PPD: printing ASCII characters but `/`, `:`,
/// quotes, commas, backslashes and braces.
[[nodiscard]] bool isPPDWord(std::string_view text) noexcept;

/// As many lines as it takes, each the prefix and items, with the separator between them. An item
/// that alone is too long for a line is left out.
[[nodiscard]] std::vector<std::string> linesOf(std::string_view prefix, char separator,
                                               const std::vector<std::string>& items);

/// The text as one line of a message; one that is too long ends with "...".
[[nodiscard]] std::string messageLine(std::string_view text);

}  // namespace commandfilter::standard
