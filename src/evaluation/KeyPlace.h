// Where the keys of a sort stand.
#pragma once

#include <cstdint>
#include <span>

namespace commandfilter {

/// Where a key stands among others.
struct KeyPlace {
  /// As much of the key as a number holds; orders as the keys do.
  std::uint64_t image;
  /// The index of the key.
  std::uint32_t arrival;
  /// There is no more of the key than the image.
  bool isWhole;
  bool equalsPrevious;
};

using KeyPlaces = std::span<KeyPlace>;

}  // namespace commandfilter
