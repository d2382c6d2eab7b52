// Two texts as one.
#pragma once

#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The descriptions of both values as one string, nil as the empty text. The left string is
/// extended in place when `left` holds the only reference to it, so that building a text piece by
/// piece costs linear time.
/// @throws Exception when a value is nested deeper than the stack allows.
[[nodiscard]] COMMANDFILTER_EXPORT Ref<String> concatenateTexts(Value left, const Value& right);

}  // namespace commandfilter
