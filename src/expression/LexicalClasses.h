// The character classes of the language, over 16-bit code units.
#pragma once

#include "runtime/Export.h"

namespace commandfilter {

/// Blank, tab, carriage return and line feed; nothing else separates tokens.
[[nodiscard]] constexpr bool isBlankUnit(char16_t unit) noexcept {
  return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}
/// ASCII digits.
[[nodiscard]] constexpr bool isDigitUnit(char16_t unit) noexcept {
  return unit >= u'0' && unit <= u'9';
}
/// ASCII hexadecimal digits.
[[nodiscard]] constexpr bool isHexDigitUnit(char16_t unit) noexcept {
  return isDigitUnit(unit) || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}
/// Unicode general category L of the single unit; surrogates are no letters.
[[nodiscard]] COMMANDFILTER_EXPORT bool isLetterUnit(char16_t unit) noexcept;
/// Letters, digits and "_".
[[nodiscard]] inline bool isNameUnit(char16_t unit) noexcept {
  return isDigitUnit(unit) || unit == u'_' || isLetterUnit(unit);
}

}  // namespace commandfilter
