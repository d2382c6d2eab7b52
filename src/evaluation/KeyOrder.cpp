#include "evaluation/KeyOrder.h"

#include <algorithm>
#include <compare>
#include <cstdint>

#include "evaluation/ImageSort.h"
#include "evaluation/KeyImages.h"
#include "evaluation/TextImage.h"
#include "runtime/Comparison.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

// Calls the function with each run of places that have the same image.
template <typename Function>
void forEachRun(KeyPlaces places, Function&& function) {
  std::size_t begin = 0;
  for (std::size_t i = 1; i <= places.size(); ++i) {
    if (i < places.size() && places[i].image == places[begin].image) continue;
    if (i - begin > 1) function(places.subspan(begin, i - begin));
    begin = i;
  }
}

// Numbers and dates: what the image leaves open, the platform's comparison decides.
void orderByImage(KeyPlaces places, std::span<const Value> keys) {
  noteImages(places, keys);
  ImageSort(places.size()).sort(places);
  forEachRun(places, [keys](KeyPlaces run) {
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

// Texts are ordered by a few bytes at a time: places whose texts agree so far are a run, and each
// run is ordered by the next bytes.
struct Run {
  KeyPlaces places;
  // How many bytes the texts are known to have in common.
  std::size_t common;
};

void orderByText(KeyPlaces places, std::span<const Value> keys) {
  ImageSort images(places.size());
  std::vector<Run> runs{{places, 0}};
  while (!runs.empty()) {
    const Run run = runs.back();
    runs.pop_back();
    const std::size_t common = commonBytes(run.places, keys, run.common);
    noteTextImages(run.places, keys, common);
    images.sort(run.places);
    forEachRun(run.places, [&runs, common](KeyPlaces same) {
      if (same.front().isWhole) {
        for (KeyPlace& place : same.subspan(1)) place.equalsPrevious = true;
      } else {
        runs.push_back({same, common + kImageBytes});
      }
    });
  }
}

// The order of two texts that have the bytes up to `common` in common, and those of one image.
std::weak_ordering orderOfTexts(const String& left, const String& right, std::size_t common) {
  const std::uint64_t first = textImage(left, common + kImageBytes);
  const std::uint64_t second = textImage(right, common + kImageBytes);
  return first != second ? first <=> second : left.compare(right);
}

}  // namespace

KeyOrder::KeyOrder(std::span<const Value> keys) {
  if (keys.size() > kFew) many_.resize(keys.size());
  const KeyPlaces room = keys.size() > kFew ? KeyPlaces(many_) : KeyPlaces(few_);
  std::size_t count = 0;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (!keys[i].isNil()) room[count++] = {0, static_cast<std::uint32_t>(i), false, false};
  }
  places_ = room.first(count);
  if (count < 2) return;
  const bool areTexts = keys[places_.front().arrival].isKind(ObjectKind::String);
  if (count <= kFew) {
    orderFew(keys, areTexts);
  } else if (areTexts) {
    orderByText(places_, keys);
  } else {
    orderByImage(places_, keys);
  }
}

// Inserts one key after the other.
void KeyOrder::orderFew(std::span<const Value> keys, bool areTexts) {
  std::size_t common = 0;
  if (areTexts) {
    common = commonBytes(places_, keys, 0);
    noteTextImages(places_, keys, common);
  } else {
    noteImages(places_, keys);
  }
  // The order of two places whose images are the same.
  const auto orderBehindImage = [keys, areTexts, common](const KeyPlace& left,
                                                         const KeyPlace& right) {
    if (left.isWhole && right.isWhole) return std::weak_ordering::equivalent;
    const Value& first = keys[left.arrival];
    const Value& second = keys[right.arrival];
    if (!areTexts) return compare(first, second);
    return orderOfTexts(static_cast<const String&>(*first.object()),
                        static_cast<const String&>(*second.object()), common);
  };
  for (std::size_t i = 1; i < places_.size(); ++i) {
    KeyPlace place = places_[i];
    std::size_t to = i;
    for (; to > 0; --to) {
      const KeyPlace& other = places_[to - 1];
      const std::weak_ordering order =
          other.image != place.image ? other.image <=> place.image : orderBehindImage(other, place);
      place.equalsPrevious = order == 0;
      if (order <= 0) break;
      places_[to] = other;
    }
    places_[to] = place;
  }
}

}  // namespace commandfilter
