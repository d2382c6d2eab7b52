// A place in an expression, shown.
#pragma once

#include <string>
#include <string_view>

#include "evaluation/protocol/SourceRange.h"

namespace commandfilter::tools {

/// The line of the expression that the range begins in, and below it carets under all of the range,
/// as wide as a terminal shows it; both begin with `indent` and end with a line feed. A range
/// behind the text, or an empty one, has one caret. Ranges count 16-bit units.
[[nodiscard]] std::string sourceExcerpt(std::string_view expression, const SourceRange& range,
                                        std::string_view indent);

}  // namespace commandfilter::tools
