// The cache keys that were put together last.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "runtime/Value.h"

namespace commandfilter {

/// Remembers the keys of a few questions, so that asking again puts no text together. A question is
/// told by the address of its message's name, none for a feature path, and by what was asked about;
/// that is kept alive, so that its address stands for nothing else.
class RecentKeys {
 public:
  /// The key of the question, borrowed until the next one is remembered; nil when it is not
  /// remembered.
  [[nodiscard]] const Value& keyFor(const void* message, const Value& about) const noexcept {
    const Entry& entry = entries_[placeOf(message, about.object())];
    return entry.message == message && entry.about.isIdenticalTo(about) ? entry.key : kNone;
  }
  /// Remembers the key of a question; `about` must not change.
  void remember(const void* message, const Value& about, const Value& key) {
    // Each question has one place, which it takes from the question that had it before.
    entries_[placeOf(message, about.object())] = {message, about, key};
  }

 private:
  static constexpr std::size_t kPlaces = 16;
  static inline const Value kNone;

  struct Entry {
    const void* message = nullptr;
    Value about;
    Value key;
  };

  [[nodiscard]] static std::size_t placeOf(const void* message, const void* about) noexcept {
    // Objects and names lie at multiples of 16, so the lowest bits tell nothing.
    const auto bits =
        reinterpret_cast<std::uintptr_t>(message) ^ (reinterpret_cast<std::uintptr_t>(about) * 3U);
    return (bits >> 4U ^ bits >> 8U) % kPlaces;
  }

  std::array<Entry, kPlaces> entries_;
};

}  // namespace commandfilter
