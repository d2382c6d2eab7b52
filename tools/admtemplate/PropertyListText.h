// Values as a property list.
#pragma once

#include <string>

#include "runtime/Value.h"

namespace commandfilter::tools {

/// The value as an XML property list. There is no null in one: a null object is left out of a
/// dictionary and is an empty string in an array. Keys that are no strings appear as their
/// descriptions, and so do objects that no property list holds.
/// @throws Exception when the value is nested deeper than the stack allows.
[[nodiscard]] std::string propertyListText(const Value& value);

}  // namespace commandfilter::tools
