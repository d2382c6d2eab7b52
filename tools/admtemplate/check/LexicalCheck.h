// What cannot be read in an expression.
#pragma once

#include <string_view>
#include <vector>

#include "check/Finding.h"
#include "check/KnownNames.h"
#include "check/Tokens.h"

namespace commandfilter::tools {

/// A complaint about each place that cannot be read.
[[nodiscard]] std::vector<ExpressionComplaint> checkReadability(std::string_view expression,
                                                                const Tokens& tokens,
                                                                KnownNames& names);

}  // namespace commandfilter::tools
