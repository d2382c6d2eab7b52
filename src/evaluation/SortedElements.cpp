#include "evaluation/SortedElements.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

#include "evaluation/KeyOrder.h"
#include "runtime/Comparison.h"

namespace commandfilter {

namespace {

// While a key was the greatest, its equals went in front of the last of them, so that the first to
// arrive stayed behind those; once there was a greater key, they went behind all of them.
void rotateEqualKeys(KeyPlaces places) {
  if (std::ranges::none_of(places, &KeyPlace::equalsPrevious)) return;
  std::uint32_t firstGreater = std::numeric_limits<std::uint32_t>::max();
  auto end = places.end();
  while (end != places.begin()) {
    auto begin = std::prev(end);
    while (begin->equalsPrevious) --begin;
    const std::uint32_t firstArrival = begin->arrival;
    auto behind = begin;
    while (behind != end && behind->arrival < firstGreater) ++behind;
    if (behind != begin) std::rotate(begin, std::next(begin), behind);
    firstGreater = std::min(firstGreater, firstArrival);
    end = begin;
  }
}

}  // namespace

constinit const Class SortedElements::kClass{.name = "SortedElements",
                                             .base = &PartialResult::kClass};

Ref<SortedElements> SortedElements::create(Ref<Array> list) {
  Ref<SortedElements> sorted = make<SortedElements>(std::move(list));
  sorted->keys_.reserve(sorted->list_->count());
  return sorted;
}

void SortedElements::refuse(const Value& key) const { static_cast<void>(compare(key, key_)); }

std::vector<Value> SortedElements::copyElements() const {
  KeyOrder order(keys_);
  const KeyPlaces places = order.places();
  rotateEqualKeys(places);
  std::vector<Value> elements;
  elements.reserve(keys_.size());
  for (const KeyPlace& place : places) elements.push_back((*list_)[place.arrival]);
  if (elements.size() < keys_.size()) {
    for (std::size_t i = 0; i < keys_.size(); ++i) {
      if (keys_[i].isNil()) elements.push_back((*list_)[i]);
    }
  }
  return elements;
}

}  // namespace commandfilter
