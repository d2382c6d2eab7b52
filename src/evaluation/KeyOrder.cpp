#include "evaluation/KeyOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Date.h"
#include "runtime/Number.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

using Places = std::span<KeyPlace>;

// Sorts by image, byte by byte from the lowest. Places with the same image stay in their order.
class ImageSort {
 public:
  // `most` is how many places there are at most.
  explicit ImageSort(std::size_t most) : other_(most < kFew ? 0 : most) {}

  void sort(Places places) {
    if (places.size() < kFew) {
      std::sort(places.begin(), places.end(), [](const KeyPlace& left, const KeyPlace& right) {
        return left.image != right.image ? left.image < right.image : left.arrival < right.arrival;
      });
      return;
    }
    std::uint64_t differences = 0;
    for (const KeyPlace& place : places) differences |= place.image ^ places.front().image;
    Places from = places;
    Places to = Places(other_).first(places.size());
    for (unsigned shift = 0; shift < kImageBits; shift += kByteBits) {
      if ((differences >> shift & kByte) == 0) continue;
      distribute(from, to, shift);
      std::swap(from, to);
    }
    if (from.data() != places.data()) std::ranges::copy(from, places.begin());
  }

 private:
  // Below, comparing is faster.
  static constexpr std::size_t kFew = 128;
  static constexpr unsigned kImageBits = 64;
  static constexpr unsigned kByteBits = 8;
  static constexpr std::uint64_t kByte = 0xFF;

  static void distribute(Places from, Places to, unsigned shift) noexcept {
    std::array<std::uint32_t, kByte + 1> next{};
    for (const KeyPlace& place : from) ++next[place.image >> shift & kByte];
    std::uint32_t sum = 0;
    for (std::uint32_t& count : next) sum += std::exchange(count, sum);
    for (const KeyPlace& place : from) to[next[place.image >> shift & kByte]++] = place;
  }

  std::vector<KeyPlace> other_;
};

// Calls the function with each run of places that have the same image.
template <typename Function>
void forEachRun(Places places, Function&& function) {
  std::size_t begin = 0;
  for (std::size_t i = 1; i <= places.size(); ++i) {
    if (i < places.size() && places[i].image == places[begin].image) continue;
    if (i - begin > 1) function(places.subspan(begin, i - begin));
    begin = i;
  }
}

// Reals as integers of the same order; both zeros are one, and NaN comes first.
std::uint64_t imageOfReal(double real) noexcept {
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;
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

void noteImage(KeyPlace& place, const Value& key) noexcept {
  if (key.isNumber()) {
    place.image = imageOfReal(key.number().doubleValue());
    place.isWhole = isWholeAsReal(key.number());
  } else if (const auto* date = castTo<Date>(key)) {
    place.image = imageOfReal(date->secondsSince1970());
    place.isWhole = !std::isnan(date->secondsSince1970());
  }
}

// Numbers and dates: what the image leaves open, the platform's comparison decides.
void orderByImage(Places places, std::span<const Value> keys) {
  for (KeyPlace& place : places) noteImage(place, keys[place.arrival]);
  ImageSort(places.size()).sort(places);
  forEachRun(places, [keys](Places run) {
    if (!std::ranges::all_of(run, &KeyPlace::isWhole)) {
      std::stable_sort(run.begin(), run.end(), [keys](const KeyPlace& left, const KeyPlace& right) {
        return compare(keys[left.arrival], keys[right.arrival]) < 0;
      });
    }
    for (std::size_t i = 1; i < run.size(); ++i) {
      run[i].equalsPrevious = (run[i - 1].isWhole && run[i].isWhole) ||
                              compare(keys[run[i - 1].arrival], keys[run[i].arrival]) == 0;
    }
  });
}

// Texts are ordered by seven bytes at a time: places whose texts agree so far are a run, and each
// run is ordered by the next bytes.
constexpr std::size_t kImageBytes = 7;

struct Run {
  Places places;
  // How many bytes the texts have in common.
  std::size_t common;
};

std::string_view textOf(const KeyPlace& place, std::span<const Value> keys) noexcept {
  return static_cast<const String*>(keys[place.arrival].object())->view();
}

// The first byte is the highest.
std::uint64_t firstBytes(std::string_view text) noexcept {
  std::array<unsigned char, sizeof(std::uint64_t)> bytes{};
  if (text.size() >= bytes.size()) {
    std::memcpy(bytes.data(), text.data(), bytes.size());
  } else {
    std::memcpy(bytes.data(), text.data(), text.size());
  }
  std::uint64_t word = 0;
  for (const unsigned char byte : bytes) word = word << 8U | byte;
  return word;
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

// Seven bytes, and behind them how many there are: a text comes before those that it begins.
void noteImage(KeyPlace& place, std::string_view rest) noexcept {
  constexpr std::uint64_t kCount = 0xFF;
  const std::uint64_t bytes = orderedAsUnits(firstBytes(rest)) & ~kCount;
  place.image = bytes | std::min(rest.size(), kImageBytes + 1);
  place.isWhole = rest.size() <= kImageBytes;
}

std::size_t commonBytes(const Run& run, std::span<const Value> keys) noexcept {
  const std::string_view first = textOf(run.places.front(), keys);
  std::size_t common = first.size();
  for (const KeyPlace& place : run.places.subspan(1)) {
    if (common == run.common) break;
    const std::string_view text = textOf(place, keys);
    const std::size_t end = std::min(common, text.size());
    std::size_t same = run.common;
    while (same < end && text[same] == first[same]) ++same;
    common = same;
  }
  return common;
}

void orderByText(Places places, std::span<const Value> keys) {
  ImageSort images(places.size());
  std::vector<Run> runs{{places, 0}};
  while (!runs.empty()) {
    const Run run = runs.back();
    runs.pop_back();
    const std::size_t common = commonBytes(run, keys);
    for (KeyPlace& place : run.places) noteImage(place, textOf(place, keys).substr(common));
    images.sort(run.places);
    forEachRun(run.places, [&runs, common](Places same) {
      if (same.front().isWhole) {
        for (KeyPlace& place : same.subspan(1)) place.equalsPrevious = true;
      } else {
        runs.push_back({same, common + kImageBytes});
      }
    });
  }
}

}  // namespace

bool canBeOrdered(const Value& left, const Value& right) noexcept {
  if (left.isNumber()) return right.isNumber();
  return (left.isKind(ObjectKind::String) && right.isKind(ObjectKind::String)) ||
         (left.isKind(ObjectKind::Date) && right.isKind(ObjectKind::Date));
}

std::vector<KeyPlace> placesOfKeys(std::span<const Value> keys) {
  std::vector<KeyPlace> places;
  places.reserve(keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (!keys[i].isNil()) places.push_back({0, static_cast<std::uint32_t>(i), false, false});
  }
  if (places.size() < 2) return places;
  if (keys[places.front().arrival].isKind(ObjectKind::String)) {
    orderByText(places, keys);
  } else {
    orderByImage(places, keys);
  }
  return places;
}

}  // namespace commandfilter
