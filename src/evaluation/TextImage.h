// Texts as numbers.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "runtime/String.h"

namespace commandfilter {

/// How many bytes of a text its image holds.
inline constexpr std::size_t kImageBytes = 7;

namespace detail {

// The bytes from `begin` on, the first one as the highest; zeros stand for those that are missing.
[[nodiscard]] inline std::uint64_t bytesFrom(const String& text, std::size_t begin) noexcept {
  if (const std::optional<std::uint64_t> word = text.wordAt(begin)) {
    return std::endian::native == std::endian::little ? __builtin_bswap64(*word) : *word;
  }
  std::uint64_t bytes = 0;
  unsigned shift = 64;
  for (const char c : text.view().substr(begin)) {
    shift -= 8;
    bytes |= std::uint64_t{static_cast<unsigned char>(c)} << shift;
  }
  return bytes;
}

// The bytes as they order 16-bit units: characters above U+FFFF come before the units from U+E000,
// whose first bytes are EE and EF.
[[nodiscard]] inline std::uint64_t orderedAsUnits(std::uint64_t word) noexcept {
  constexpr std::uint64_t kNotASCII = 0x8080808080808080;
  if ((word & kNotASCII) == 0) return word;
  for (unsigned shift = 0; shift < 64; shift += 8) {
    const std::uint64_t byte = word >> shift & 0xFFU;
    if (byte == 0xEE || byte == 0xEF) word |= std::uint64_t{0x10} << shift;
  }
  return word;
}

}  // namespace detail

/// The bytes of a text from `begin` on, which is not behind its end, as a number that orders as the
/// 16-bit units do: seven bytes, and behind them how many there are, since a text comes before
/// those that it begins. More than seven are counted as eight.
[[nodiscard]] inline std::uint64_t textImage(const String& text, std::size_t begin) noexcept {
  constexpr std::uint64_t kCount = 0xFF;
  const std::uint64_t bytes = detail::orderedAsUnits(detail::bytesFrom(text, begin)) & ~kCount;
  return bytes | std::min(text.view().size() - begin, kImageBytes + 1);
}

/// True when there is no more of the text than the image.
[[nodiscard]] constexpr bool isWholeText(std::uint64_t image) noexcept {
  constexpr std::uint64_t kCount = 0xFF;
  return (image & kCount) <= kImageBytes;
}

}  // namespace commandfilter
