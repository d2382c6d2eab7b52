// Unicode rules for text: lower-casing, blanks, line ends.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "runtime/Export.h"

namespace commandfilter {

/// The text in lower case by Unicode's full mapping, independent of language. Well-formed UTF-8.
[[nodiscard]] COMMANDFILTER_EXPORT std::string lowercase(std::string_view text);
/// The text in upper case by Unicode's full mapping, independent of language.
[[nodiscard]] COMMANDFILTER_EXPORT std::string uppercase(std::string_view text);

/// True for tab and the space separators (Unicode general category Zs); not for line ends.
[[nodiscard]] COMMANDFILTER_EXPORT bool isWhitespace(char32_t codePoint) noexcept;
/// Unicode general category L; surrogates are no letters.
[[nodiscard]] COMMANDFILTER_EXPORT bool isLetter(char32_t codePoint) noexcept;
/// True for U+000A to U+000D, U+0085, U+2028 and U+2029.
[[nodiscard]] COMMANDFILTER_EXPORT bool isNewline(char32_t codePoint) noexcept;

/// The part of the text between leading and trailing whitespace.
[[nodiscard]] COMMANDFILTER_EXPORT std::string_view trimmed(std::string_view text) noexcept;

/// Where the first line end at or after byte `start` lies.
struct LineEnd {
  /// The first byte of the newline character, or the size of the text when there is none.
  std::size_t offset;
  /// The first byte of the next line.
  std::size_t next;
};
[[nodiscard]] COMMANDFILTER_EXPORT LineEnd findLineEnd(std::string_view text,
                                                       std::size_t start) noexcept;

}  // namespace commandfilter
