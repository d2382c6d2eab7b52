#include "AttributeLines.h"

#include <algorithm>
#include <string_view>

#include "SchedulerLines.h"

namespace commandfilter::standard {

namespace {

constexpr std::string_view kPrefix = "ATTR: ";
// The longest name that IPP knows, and the shortest that still tells supplies apart.
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kShortestName = 6;

bool holdsNames(const SupplyAttribute& attribute) { return attribute.name.ends_with("-names"); }

bool fits(const SupplyAttribute& attribute) {
  return kPrefix.size() + assignment(attribute.name, attribute.values).size() <= kLongestLine;
}

SupplyAttribute withNamesOf(const SupplyAttribute& attribute, std::size_t bytes) {
  SupplyAttribute shorter{attribute.name, {}};
  for (const std::string& value : attribute.values) {
    shorter.values.emplace_back(beginning(value, bytes));
  }
  return shorter;
}

// The greatest number from `least` up to `most` that is true; `least` when none is. What is true of
// a number is true of all that are smaller.
template <typename Condition>
std::size_t greatest(std::size_t least, std::size_t most, Condition&& condition) {
  while (least < most) {
    const std::size_t middle = most - (most - least) / 2;
    if (condition(middle)) {
      least = middle;
    } else {
      most = middle - 1;
    }
  }
  return least;
}

// The names at the greatest length with which they fit, or at the shortest.
SupplyAttribute withShorterNames(const SupplyAttribute& attribute) {
  const std::size_t bytes = greatest(kShortestName, kLongestName, [&attribute](std::size_t length) {
    return fits(withNamesOf(attribute, length));
  });
  return withNamesOf(attribute, bytes);
}

void replace(std::vector<std::string>& values, const std::map<std::string, std::string>& forms) {
  for (std::string& value : values) {
    const auto found = forms.find(value);
    if (found != forms.end()) value = found->second;
  }
}

// How many values, from the first, fit into a line.
std::size_t countThatFits(const SupplyAttribute& attribute) {
  return greatest(0, attribute.values.size(), [&attribute](std::size_t count) {
    SupplyAttribute shorter = attribute;
    shorter.values.resize(count);
    return fits(shorter);
  });
}

}  // namespace

AttributeLines attributeLines(std::vector<SupplyAttribute> attributes, const ShortForms& shortForms,
                              const std::vector<std::string>& knownNames) {
  std::erase_if(attributes, [](const SupplyAttribute& each) { return each.values.empty(); });
  if (attributes.empty()) return {};
  std::size_t most = 0;
  std::size_t count = attributes.front().values.size();
  for (SupplyAttribute& attribute : attributes) {
    most = std::max(most, attribute.values.size());
    count = std::min(count, attribute.values.size());
    for (std::string& value : attribute.values) {
      value = beginning(singleLine(value), kLongestName);
      // The scheduler ends a list at a value that is empty.
      if (value.empty()) value.push_back('?');
    }
  }
  for (SupplyAttribute& attribute : attributes) attribute.values.resize(count);

  const auto isKnown = [&knownNames](const SupplyAttribute& each) {
    return each.name == "marker-names" && each.values == knownNames;
  };
  std::string all(kPrefix);
  for (const SupplyAttribute& attribute : attributes) {
    if (isKnown(attribute)) continue;
    if (all.size() > kPrefix.size()) all.push_back(' ');
    all.append(assignment(attribute.name, attribute.values));
  }
  if (all.size() == kPrefix.size()) return {{}, most - count};
  if (all.size() <= kLongestLine) return {{std::move(all)}, most - count};

  for (SupplyAttribute& attribute : attributes) {
    const auto forms = shortForms.find(attribute.name);
    if (!fits(attribute) && forms != shortForms.end()) replace(attribute.values, forms->second);
    if (!fits(attribute) && holdsNames(attribute)) attribute = withShorterNames(attribute);
    count = std::min(count, countThatFits(attribute));
  }
  AttributeLines result;
  result.leftOut = most - count;
  for (SupplyAttribute& attribute : attributes) {
    attribute.values.resize(count);
    if (isKnown(attribute)) continue;
    result.lines.push_back(std::string(kPrefix) + assignment(attribute.name, attribute.values));
  }
  return result;
}

}  // namespace commandfilter::standard
