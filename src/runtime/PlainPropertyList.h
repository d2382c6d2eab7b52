// XML property lists that are written as programs write them.
#pragma once

#include <optional>
#include <string_view>

#include "runtime/Value.h"

namespace commandfilter::detail {

/// Reads a list in the form that nearly all have: XML 1.0 in UTF-8, tags without attributes or
/// blanks, only the five entities that every document has, no CDATA sections, no processing
/// instructions. None for everything else, right or wrong: what it is then, the XML parser has to
/// say. What is read here the parser reads as the same, at several times the cost.
[[nodiscard]] std::optional<Value> readPlainPropertyList(std::string_view text);

}  // namespace commandfilter::detail
