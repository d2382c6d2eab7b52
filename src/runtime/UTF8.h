// UTF-8, with positions in 16-bit code units as the language counts them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "runtime/Export.h"

namespace commandfilter {

/// True for well-formed UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF). NUL is
/// a character like any other.
[[nodiscard]] COMMANDFILTER_EXPORT bool isUTF8(std::string_view text) noexcept;

/// True when every byte is below 128, so that bytes, characters and code units are one.
[[nodiscard]] COMMANDFILTER_EXPORT bool isASCII(std::string_view text) noexcept;

/// The text with each ill-formed sequence replaced by U+FFFD.
[[nodiscard]] COMMANDFILTER_EXPORT std::string toWellFormedUTF8(std::string_view text);

/// The number of 16-bit code units of well-formed text.
[[nodiscard]] COMMANDFILTER_EXPORT std::size_t lengthInCodeUnits(std::string_view text) noexcept;

/// The code point that starts at byte `offset` of well-formed text; `offset` moves behind it.
[[nodiscard]] COMMANDFILTER_EXPORT char32_t nextCodePoint(std::string_view text,
                                                          std::size_t& offset) noexcept;

/// Appends a code point; one that no UTF-8 can hold is appended as U+FFFD.
COMMANDFILTER_EXPORT void appendCodePoint(std::string& text, char32_t codePoint);

}  // namespace commandfilter
