// Null objects in device descriptions.
#pragma once

#include "runtime/Value.h"

namespace commandfilter {

/// The value with the null object in the place of each dictionary whose only key is "$null":
/// property lists have no null object, and lists that devices answer do. The same value when it
/// holds none.
[[nodiscard]] Value withNullObjects(const Value& value);

}  // namespace commandfilter
