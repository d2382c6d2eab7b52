// The cache keys that were put together last.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "runtime/Value.h"

namespace commandfilter {

/// Remembers the keys of a few questions, so that asking again puts no text together. A question is
/// told by the address of its message's name, none for a feature path, and by the identity of what
/// was asked about, which is kept alive so that its address stands for nothing else.
class RecentKeys {
 public:
  /// The components of a path, or the argument of a message; nil behind the last one.
  using Subject = std::array<Value, 3>;

  /// The key of the question, borrowed until the next one is remembered; nil when it is not
  /// remembered.
  [[nodiscard]] const Value& keyFor(const void* message, const Subject& subject) const noexcept {
    const Entry& entry = entries_[placeOf(message, subject)];
    const bool isSame = entry.message == message && entry.subject[0].isIdenticalTo(subject[0]) &&
                        entry.subject[1].isIdenticalTo(subject[1]) &&
                        entry.subject[2].isIdenticalTo(subject[2]);
    return isSame ? entry.key : kNone;
  }
  /// Remembers the key of a question, whose subject does not change.
  void remember(const void* message, Subject subject, const Value& key) {
    // Each question has one place, which it takes from the question that had it before.
    Entry& entry = entries_[placeOf(message, subject)];
    entry = {message, std::move(subject), key};
  }

 private:
  static constexpr std::size_t kPlaces = 32;
  static constexpr Value kNone{};

  struct Entry {
    const void* message = nullptr;
    Subject subject;
    Value key;
  };

  [[nodiscard]] static std::size_t placeOf(const void* message, const Subject& subject) noexcept {
    const auto bits = [](const void* address) { return reinterpret_cast<std::uintptr_t>(address); };
    const std::uintptr_t sum = bits(message) + bits(subject[0].object()) * 3U +
                               bits(subject[1].object()) * 5U + bits(subject[2].object()) * 7U;
    // Objects and names lie at multiples of 16, so the lowest bits tell nothing.
    return (sum >> 4U ^ sum >> 9U) % kPlaces;
  }

  std::array<Entry, kPlaces> entries_;
};

}  // namespace commandfilter
