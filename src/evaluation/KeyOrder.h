// The order of the keys of a sort.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "runtime/Value.h"

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

/// True when the platform's comparison orders the two.
[[nodiscard]] bool canBeOrdered(const Value& left, const Value& right) noexcept;

/// The places of keys that can all be ordered, or of a single one: by key, equal ones by arrival.
/// Keys that are nil are left out.
[[nodiscard]] std::vector<KeyPlace> placesOfKeys(std::span<const Value> keys);

}  // namespace commandfilter
