#include "evaluation/KeyImages.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "runtime/Date.h"
#include "runtime/Number.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;

// Reals as integers of the same order; both zeros are one, and NaN comes first.
std::uint64_t imageOfReal(double real) noexcept {
  if (std::isnan(real)) return 0;
  const auto bits = std::bit_cast<std::uint64_t>(real + 0.0);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

bool isWholeAsReal(const Number& number) noexcept {
  if (number.isReal()) return !std::isnan(number.doubleValue());
  constexpr std::int64_t kWhole = std::int64_t{1} << 53U;
  const std::int64_t value = number.longValue();
  // A large unsigned number reads as a negative one.
  return value <= kWhole && value >= (number.encoding() == 'Q' ? 0 : -kWhole);
}

void noteImageOf(KeyPlace& place, const Number& key) noexcept {
  place.image = imageOfReal(key.doubleValue());
  place.isWhole = isWholeAsReal(key);
}

void noteImageOf(KeyPlace& place, const Date& key) noexcept {
  place.image = imageOfReal(key.secondsSince1970());
  place.isWhole = !std::isnan(key.secondsSince1970());
}

bool areSignedIntegers(KeyPlaces places, std::span<const Value> keys) noexcept {
  return std::ranges::all_of(places, [keys](const KeyPlace& place) {
    const Number key = keys[place.arrival].number();
    return !key.isReal() && key.encoding() != 'Q';
  });
}

std::string_view textOf(const KeyPlace& place, std::span<const Value> keys) noexcept {
  return static_cast<const String*>(keys[place.arrival].object())->view();
}

// The first byte is the highest; zeros stand for those that are missing.
std::uint64_t firstBytes(std::string_view text) noexcept {
  std::uint64_t word = 0;
  if (text.size() >= sizeof word) {
    std::array<unsigned char, sizeof word> bytes{};
    std::memcpy(bytes.data(), text.data(), bytes.size());
    for (const unsigned char byte : bytes) word = word << 8U | byte;
    return word;
  }
  for (const char c : text) word = word << 8U | static_cast<unsigned char>(c);
  return text.empty() ? 0 : word << 8U * (sizeof word - text.size());
}

// The bytes as they order 16-bit units: characters above U+FFFF come before the units from U+E000,
// whose first bytes are EE and EF.
std::uint64_t orderedAsUnits(std::uint64_t word) noexcept {
  constexpr std::uint64_t kNotASCII = 0x8080808080808080;
  if ((word & kNotASCII) == 0) return word;
  for (unsigned shift = 0; shift < 64; shift += 8) {
    const std::uint64_t byte = word >> shift & 0xFFU;
    if (byte == 0xEE || byte == 0xEF) word |= std::uint64_t{0x10} << shift;
  }
  return word;
}

}  // namespace

void noteImages(KeyPlaces places, std::span<const Value> keys) noexcept {
  if (places.empty()) return;
  if (!keys[places.front().arrival].isNumber()) {
    for (KeyPlace& place : places) {
      noteImageOf(place, static_cast<const Date&>(*keys[place.arrival].object()));
    }
    return;
  }
  // All of an integer fits in an image, but then no real can stand among them.
  const bool areIntegers = areSignedIntegers(places, keys);
  for (KeyPlace& place : places) {
    const Number key = keys[place.arrival].number();
    if (areIntegers) {
      place.image = static_cast<std::uint64_t>(key.longValue()) ^ kSign;
      place.isWhole = true;
    } else {
      noteImageOf(place, key);
    }
  }
}

// Seven bytes, and behind them how many there are: a text comes before those that it begins.
void noteTextImages(KeyPlaces places, std::span<const Value> keys, std::size_t begin) noexcept {
  constexpr std::uint64_t kCount = 0xFF;
  for (KeyPlace& place : places) {
    const std::string_view rest = textOf(place, keys).substr(begin);
    const std::uint64_t bytes = orderedAsUnits(firstBytes(rest)) & ~kCount;
    place.image = bytes | std::min(rest.size(), kImageBytes + 1);
    place.isWhole = rest.size() <= kImageBytes;
  }
}

std::size_t commonBytes(KeyPlaces places, std::span<const Value> keys, std::size_t known) noexcept {
  const std::string_view first = textOf(places.front(), keys);
  std::size_t common = first.size();
  for (const KeyPlace& place : places.subspan(1)) {
    if (common == known) break;
    const std::string_view text = textOf(place, keys);
    const std::size_t end = std::min(common, text.size());
    std::size_t same = known;
    while (same < end && text[same] == first[same]) ++same;
    common = same;
  }
  return common;
}

}  // namespace commandfilter
