// Attributes of the queue, on lines that the scheduler takes whole.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace commandfilter::standard {

/// An attribute with a value for each of the printer's supplies.
struct SupplyAttribute {
  std::string name;
  std::vector<std::string> values;
};

/// By attribute, what a value may be replaced with where room is short.
using ShortForms = std::map<std::string, std::map<std::string, std::string>>;

struct AttributeLines {
  std::vector<std::string> lines;
  /// How many supplies, the last ones, are not in the lines.
  std::size_t leftOut = 0;
};

/// The `ATTR:` line of the attributes. What does not fit into one line becomes a line for each
/// attribute; an attribute that does not fit there gets its short forms, or shorter names when its
/// name ends with "-names"; only then supplies are left out, of all attributes alike, so that the
/// values of each stay those of the same supply. Attributes without values have no line; where one
/// has more values than another, those are left out too.
///
/// Names that the queue knows already are left out: the scheduler lists the supplies' descriptions
/// once more whenever it is told names.
[[nodiscard]] AttributeLines attributeLines(std::vector<SupplyAttribute> attributes,
                                            const ShortForms& shortForms = {},
                                            const std::vector<std::string>& knownNames = {});

}  // namespace commandfilter::standard
