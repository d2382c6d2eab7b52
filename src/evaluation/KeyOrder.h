// The order of the keys of a sort.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "evaluation/KeyPlace.h"
#include "runtime/Value.h"

namespace commandfilter {

/// True when the platform's comparison orders the two.
[[nodiscard]] inline bool canBeOrdered(const Value& left, const Value& right) noexcept {
  if (left.isNumber()) return right.isNumber();
  return (left.isKind(ObjectKind::String) && right.isKind(ObjectKind::String)) ||
         (left.isKind(ObjectKind::Date) && right.isKind(ObjectKind::Date));
}

/// The places of keys that can all be ordered, or of a single one: by key, equal ones by arrival.
/// Keys that are nil are left out.
class KeyOrder {
 public:
  explicit KeyOrder(std::span<const Value> keys);
  KeyOrder(const KeyOrder&) = delete;
  KeyOrder& operator=(const KeyOrder&) = delete;

  [[nodiscard]] KeyPlaces places() noexcept { return places_; }

 private:
  // So many are put in order where they stand, without asking for memory.
  static constexpr std::size_t kFew = 16;

  void orderFew(std::span<const Value> keys, bool areTexts);

  // Written before they are read.
  std::array<KeyPlace, kFew> few_;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  std::vector<KeyPlace> many_;
  KeyPlaces places_;
};

}  // namespace commandfilter
