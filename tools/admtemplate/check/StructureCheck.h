// The build of an expression.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "check/Finding.h"
#include "check/Tokens.h"

namespace commandfilter::tools {

/// Complains about operands, operators, braces and elements of lists that are missing or too many.
/// Says nothing where a token could not be read. Of very many complaints, the first.
[[nodiscard]] std::vector<ExpressionComplaint> checkStructure(std::string_view expression,
                                                              const Tokens& tokens);

}  // namespace commandfilter::tools
