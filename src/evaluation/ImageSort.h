// Sorting numbers that stand for keys.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "evaluation/KeyPlace.h"

namespace commandfilter {

/// Sorts by image, byte by byte from the lowest. Places with the same image stay in their order.
class ImageSort {
 public:
  /// `most` is how many places there are at most.
  explicit ImageSort(std::size_t most) : other_(most < kFew ? 0 : most) {}

  void sort(KeyPlaces places) {
    if (places.size() < kFew) {
      std::sort(places.begin(), places.end(), [](const KeyPlace& left, const KeyPlace& right) {
        return left.image != right.image ? left.image < right.image : left.arrival < right.arrival;
      });
      return;
    }
    std::uint64_t differences = 0;
    for (const KeyPlace& place : places) differences |= place.image ^ places.front().image;
    KeyPlaces from = places;
    KeyPlaces to = KeyPlaces(other_).first(places.size());
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

  static void distribute(KeyPlaces from, KeyPlaces to, unsigned shift) noexcept {
    std::array<std::uint32_t, kByte + 1> next{};
    for (const KeyPlace& place : from) ++next[place.image >> shift & kByte];
    std::uint32_t sum = 0;
    for (std::uint32_t& count : next) sum += std::exchange(count, sum);
    for (const KeyPlace& place : from) to[next[place.image >> shift & kByte]++] = place;
  }

  std::vector<KeyPlace> other_;
};

}  // namespace commandfilter
