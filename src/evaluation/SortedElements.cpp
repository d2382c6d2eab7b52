#include "evaluation/SortedElements.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

#include "evaluation/KeyOrder.h"
#include "runtime/ArrayExtension.h"
#include "runtime/Comparison.h"
#include "runtime/ValueVector.h"

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

std::size_t SortedElements::placeOf(const Value& key) const {
  std::size_t low = 0;
  std::size_t high = arrangedKeys_.size() - 1;
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    if (compare(key, arrangedKeys_[middle]) < 0) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return compare(key, arrangedKeys_[high]) > 0 ? high + 1 : high;
}

Ref<Array> SortedElements::elementsAt(KeyPlaces places) const {
  const Array& list = *list_;
  ValueVector elements;
  elements.reserve(keys_.size());
  for (const KeyPlace& place : places) elements.push_back(list[place.arrival]);
  if (elements.size() < keys_.size()) {
    for (std::size_t i = 0; i < keys_.size(); ++i) {
      if (keys_[i].isNil()) elements.push_back(list[i]);
    }
  }
  return Array::create(std::move(elements));
}

Ref<Array> SortedElements::takeElements() {
  if (arranged_) return elementsSoFar();
  KeyOrder order(keys_);
  rotateEqualKeys(order.places());
  return elementsAt(order.places());
}

Ref<Array> SortedElements::elementsSoFar() {
  if (!arranged_ || keys_.size() > 2 * arrangedCount_) {
    arrangeAll();
  } else {
    while (arrangedCount_ < keys_.size()) arrangeNext();
  }
  return Ref<Array>(*arranged_);
}

void SortedElements::arrangeAll() {
  KeyOrder order(keys_);
  rotateEqualKeys(order.places());
  arrangedKeys_.clear();
  arrangedKeys_.reserve(keys_.size());
  for (const KeyPlace& place : order.places()) arrangedKeys_.push_back(keys_[place.arrival]);
  arranged_ = elementsAt(order.places());
  arrangedCount_ = keys_.size();
}

void SortedElements::arrangeNext() {
  const Value& key = keys_[arrangedCount_];
  std::size_t place = arrangedCount_;
  if (!key.isNil()) {
    place = arrangedKeys_.empty() ? 0 : placeOf(key);
    arrangedKeys_.insert(arrangedKeys_.begin() + static_cast<std::ptrdiff_t>(place), key);
  }
  Ref<Array> elements(*arranged_);
  arranged_ = nullptr;
  arranged_ = arrayWithElementAt(std::move(elements), place, (*list_)[arrangedCount_]);
  ++arrangedCount_;
}

}  // namespace commandfilter
