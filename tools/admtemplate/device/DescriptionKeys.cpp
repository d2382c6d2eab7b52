#include "device/DescriptionKeys.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "check/NearestName.h"
#include "device/Lists.h"
#include "runtime/Cast.h"
#include "runtime/Description.h"

namespace commandfilter::tools {

namespace {

struct Shape;

// A key that a dictionary may have.
struct Entry {
  std::string_view key;
  // What may stand under it; nullptr for anything.
  const Shape* shape = nullptr;
  // True when that holds for each entry of a dictionary there, whose keys can be any.
  bool isForEach = false;
};

struct Shape {
  std::string_view what;
  std::span<const Entry> entries;
};

constexpr std::array kPropertyEntries{Entry{"Value"}, Entry{"Identifiers"}};
constexpr Shape kProperty{"a property", kPropertyEntries};
constexpr std::array kFeatureEntries{Entry{"Value"}, Entry{"Identifiers"},
                                     Entry{"Properties", &kProperty, true}};
constexpr Shape kFeature{"a feature", kFeatureEntries};
constexpr std::array kServiceEntries{Entry{"Messages"}, Entry{"Features", &kFeature, true}};
constexpr Shape kService{"a service", kServiceEntries};
constexpr std::array kResolutionEntries{Entry{"Delay"}, Entry{"Outcome"}};
constexpr Shape kResolution{"a resolution", kResolutionEntries};
constexpr std::array kDeviceEntries{Entry{"DeviceID"},
                                    Entry{"ServiceState"},
                                    Entry{"URI"},
                                    Entry{"ConnectionType"},
                                    Entry{"VendorName"},
                                    Entry{"ModelName"},
                                    Entry{"ConnectionParams"},
                                    Entry{"Resolution", &kResolution},
                                    Entry{"ModelInfo"},
                                    Entry{"StatusServices", &kService, true}};
constexpr Shape kDevice{"a device", kDeviceEntries};

// The way to an entry. It is written out for a key that is ignored only.
struct Place {
  const Place* parent;
  const Value& key;

  [[nodiscard]] std::string text() const {
    return (parent != nullptr ? parent->text() + " > " : "") + descriptionOf(key);
  }
};

std::string remedyFor(std::string_view key, const Shape& shape) {
  std::vector<std::string_view> names;
  for (const Entry& entry : shape.entries) names.push_back(entry.key);
  const std::string_view nearest = NearestName(names).of(key);
  if (!nearest.empty()) return "write " + std::string(nearest);
  return std::string(shape.what) + " has " +
         listOf(std::vector<std::string>(names.begin(), names.end()));
}

void search(const Value& value, const Shape& shape, const Place* parent,
            std::vector<std::string>& found) {
  constexpr std::size_t kMost = 20;
  const auto* dictionary = castTo<Dictionary>(value);
  if (dictionary == nullptr) return;
  for (const DictionaryEntry& entry : *dictionary) {
    if (found.size() == kMost) return;
    const Place place{parent, entry.key};
    const std::string_view key = textOf(castTo<String>(entry.key));
    const auto known = std::ranges::find(shape.entries, key, &Entry::key);
    if (known == shape.entries.end()) {
      found.push_back(place.text() + " is ignored; " + remedyFor(key, shape));
    } else if (known->shape != nullptr && !known->isForEach) {
      search(entry.value, *known->shape, &place, found);
    } else if (const auto* each = castTo<Dictionary>(entry.value); known->isForEach && each) {
      for (const DictionaryEntry& inner : *each) {
        const Place innerPlace{&place, inner.key};
        search(inner.value, *known->shape, &innerPlace, found);
      }
    }
  }
}

}  // namespace

std::vector<std::string> ignoredKeys(const Dictionary& description) {
  std::vector<std::string> found;
  search(Value::sharing(&description), kDevice, nullptr, found);
  return found;
}

}  // namespace commandfilter::tools
