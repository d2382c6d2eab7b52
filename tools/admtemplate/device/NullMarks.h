// Null objects in device descriptions.
#pragma once

#include "runtime/Value.h"

namespace commandfilter::tools {

/// The value with the dictionary that stands for the null object in a device description in the
/// place of each: property lists have none.
[[nodiscard]] Value withNullMarks(const Value& value);

}  // namespace commandfilter::tools
