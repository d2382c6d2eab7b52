// The character classes of the language, over 16-bit code units.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "runtime/Export.h"

namespace commandfilter {

namespace detail {

// The classes of the units below 256, a bit for each.
inline constexpr std::uint8_t kBlankClass = 1;
inline constexpr std::uint8_t kDigitClass = 2;
inline constexpr std::uint8_t kHexDigitClass = 4;
inline constexpr std::uint8_t kLetterClass = 8;
inline constexpr std::uint8_t kNameClass = 16;
inline constexpr std::size_t kClassified = 256;

constexpr std::array<std::uint8_t, kClassified> unitClasses() {
  std::array<std::uint8_t, kClassified> classes{};
  classes[' '] = classes['\t'] = classes['\r'] = classes['\n'] = kBlankClass;
  for (std::size_t c = '0'; c <= '9'; ++c) classes[c] = kDigitClass | kHexDigitClass | kNameClass;
  for (std::size_t c = 'A'; c <= 'Z'; ++c) {
    const bool isHexDigit = c <= 'F';
    classes[c] = kLetterClass | kNameClass | (isHexDigit ? kHexDigitClass : 0);
    classes[c - 'A' + 'a'] = classes[c];
  }
  classes['_'] = kNameClass;
  for (std::size_t c = 0xC0; c <= 0xFF; ++c) {
    const bool isSign = c == 0xD7 || c == 0xF7;  // times, divided by
    if (!isSign) classes[c] = kLetterClass | kNameClass;
  }
  for (const std::size_t c : {0xAAU, 0xB5U, 0xBAU}) classes[c] = kLetterClass | kNameClass;
  return classes;
}
inline constexpr std::array<std::uint8_t, kClassified> kUnitClasses = unitClasses();

[[nodiscard]] constexpr bool isOfClass(char16_t unit, std::uint8_t wanted) noexcept {
  return unit < kClassified && (kUnitClasses[unit] & wanted) != 0;
}
[[nodiscard]] COMMANDFILTER_EXPORT bool isLetterBeyondLatin(char16_t unit) noexcept;

}  // namespace detail

/// Blank, tab, carriage return and line feed; nothing else separates tokens.
[[nodiscard]] constexpr bool isBlankUnit(char16_t unit) noexcept {
  return detail::isOfClass(unit, detail::kBlankClass);
}
/// ASCII digits.
[[nodiscard]] constexpr bool isDigitUnit(char16_t unit) noexcept {
  return detail::isOfClass(unit, detail::kDigitClass);
}
/// ASCII hexadecimal digits.
[[nodiscard]] constexpr bool isHexDigitUnit(char16_t unit) noexcept {
  return detail::isOfClass(unit, detail::kHexDigitClass);
}
/// Unicode general category L of the single unit; surrogates are no letters.
[[nodiscard]] inline bool isLetterUnit(char16_t unit) noexcept {
  if (unit < detail::kClassified) return detail::isOfClass(unit, detail::kLetterClass);
  return detail::isLetterBeyondLatin(unit);
}
/// Letters, digits and "_".
[[nodiscard]] inline bool isNameUnit(char16_t unit) noexcept {
  if (unit < detail::kClassified) return detail::isOfClass(unit, detail::kNameClass);
  return detail::isLetterBeyondLatin(unit);
}

}  // namespace commandfilter
