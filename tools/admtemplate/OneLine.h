// Values on one line.
#pragma once

#include <string>

#include "runtime/Value.h"

namespace commandfilter::tools {

/// The value as JSON on one line, so that a text and a number, nil and the null object can be told
/// apart; `nil` for nil. What is longer than a few lines of a terminal ends with three full stops.
[[nodiscard]] std::string oneLine(const Value& value);

}  // namespace commandfilter::tools
