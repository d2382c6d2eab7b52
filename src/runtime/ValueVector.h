// Values in a row.
#pragma once

#include <vector>

#include "runtime/ObjectMemory.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Values in a row, as arrays keep them. Most are few and short-lived, so they take their memory
/// where objects do.
using ValueVector = std::vector<Value, ObjectAllocator<Value>>;

}  // namespace commandfilter
