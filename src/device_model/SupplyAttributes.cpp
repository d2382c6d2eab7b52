// Supplies as a queue's attributes list them.
#include <algorithm>
#include <array>
#include <charconv>

#include "device_model/ColorNames.h"
#include "device_model/Supply.h"

namespace commandfilter {

namespace {

std::string valueAt(const QueueAttributes& attributes, std::string_view name, std::size_t index) {
  const auto found = attributes.find(name);
  if (found == attributes.end() || index >= found->second.size()) return {};
  return found->second[index];
}

std::optional<int> integerAt(const QueueAttributes& attributes, std::string_view name,
                             std::size_t index) {
  const std::string text = valueAt(attributes, name, index);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// The registered keywords are the Printer MIB's words with hyphens in them.
std::string wordOfKeyword(std::string_view keyword) {
  std::string word;
  bool raise = false;
  for (const char c : keyword) {
    if (c == '-') {
      raise = true;
      continue;
    }
    word.push_back(raise && c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c);
    raise = false;
  }
  return word;
}

void setLevel(Supply& supply, int level, bool countsFilling) {
  constexpr int kSome = -3;
  constexpr int kUnknown = -2;
  constexpr int kWhole = 100;
  if (level < 0) {
    supply.levelInfo = level == kSome ? "some" : level == kUnknown ? "unknown" : "other";
    return;
  }
  level = std::min(level, kWhole);
  // Backends count how full a receptacle is; the rest of the system, what room is left.
  supply.percent = countsFilling ? kWhole - level : level;
  supply.remaining = *supply.percent;
}

}  // namespace

std::vector<Supply> suppliesOfAttributes(const QueueAttributes& attributes) {
  std::size_t count = 0;
  for (const char* name : {"marker-names", "marker-levels"}) {
    const auto found = attributes.find(name);
    if (found != attributes.end()) count = std::max(count, found->second.size());
  }
  std::vector<Supply> supplies;
  for (std::size_t i = 0; i < count; ++i) {
    Supply supply;
    supply.identifier = std::to_string(i + 1);
    supply.name = valueAt(attributes, "marker-names", i);
    supply.type = wordOfKeyword(valueAt(attributes, "marker-types", i));
    if (!supply.type.empty()) {
      supply.supplyClass =
          supply.type.starts_with("waste") ? "receptacleThatIsFilled" : "supplyThatIsConsumed";
    }
    supply.unit = "percent";
    const std::optional<int> high = integerAt(attributes, "marker-high-levels", i);
    const std::optional<int> low = integerAt(attributes, "marker-low-levels", i);
    // A receptacle that is counted by how full it is warns at its high level; one that warns at no
    // level is counted by its room, as the device counts it.
    const bool countsRoom = low == 0 && high == 100;
    const bool countsFilling = supply.isReceptacle() && !countsRoom;
    if (const auto level = integerAt(attributes, "marker-levels", i)) {
      setLevel(supply, *level, countsFilling);
    }
    if (supply.isReceptacle()) {
      if (high && *high > 0 && *high < 100) supply.lowPercent = 100 - *high;
    } else {
      if (low && *low > 0 && *low < 100) supply.lowPercent = low;
    }
    const std::string color = valueAt(attributes, "marker-colors", i);
    if (color.starts_with('#')) {
      supply.rgb = color;
      supply.colorName = colorNameOfRGB(color);
    }
    supplies.push_back(std::move(supply));
  }
  return supplies;
}

}  // namespace commandfilter
