#include "evaluation/KeyImages.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "evaluation/TextImage.h"
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

// All of a signed integer fits in an image, but then no other number can stand among them: false
// when there is one, and nothing is noted that holds.
bool noteSignedIntegers(KeyPlaces places, std::span<const Value> keys) noexcept {
  for (KeyPlace& place : places) {
    const Number key = keys[place.arrival].number();
    if (key.isReal() || key.encoding() == 'Q') return false;
    place.image = static_cast<std::uint64_t>(key.longValue()) ^ kSign;
    place.isWhole = true;
  }
  return true;
}

const String& textAt(const KeyPlace& place, std::span<const Value> keys) noexcept {
  return static_cast<const String&>(*keys[place.arrival].object());
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
  if (noteSignedIntegers(places, keys)) return;
  for (KeyPlace& place : places) noteImageOf(place, keys[place.arrival].number());
}

void noteTextImages(KeyPlaces places, std::span<const Value> keys, std::size_t begin) noexcept {
  for (KeyPlace& place : places) {
    place.image = textImage(textAt(place, keys), begin);
    place.isWhole = isWholeText(place.image);
  }
}

std::size_t commonBytes(KeyPlaces places, std::span<const Value> keys, std::size_t known) noexcept {
  const std::string_view first = textAt(places.front(), keys).view();
  std::size_t common = first.size();
  for (const KeyPlace& place : places.subspan(1)) {
    if (common == known) break;
    const std::string_view text = textAt(place, keys).view();
    const std::size_t end = std::min(common, text.size());
    std::size_t same = known;
    while (same < end && text[same] == first[same]) ++same;
    common = same;
  }
  return common;
}

}  // namespace commandfilter
