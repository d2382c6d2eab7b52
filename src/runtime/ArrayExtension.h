// Arrays with more elements.
#pragma once

#include "runtime/Array.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The elements of the left array followed by those of the right one, or by the right value as one
/// element. The left array is extended in place when `left` holds the only reference to it, so
/// that building an array piece by piece costs linear time. `left` must be an array.
[[nodiscard]] COMMANDFILTER_EXPORT Ref<Array> arrayExtendedBy(Value left, const Value& right);

/// The array with the element put in front of the index, in place when nobody else holds the array.
[[nodiscard]] COMMANDFILTER_EXPORT Ref<Array> arrayWithElementAt(Ref<Array> array,
                                                                 std::size_t index, Value element);

}  // namespace commandfilter
