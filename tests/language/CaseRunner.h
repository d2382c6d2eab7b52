// Evaluates language cases.
#pragma once

#include <string>
#include <vector>

#include "language/CaseFile.h"

namespace commandfilter::testing {

/// Compiles and evaluates the expression of a case and gives a line for everything that is not as
/// the case says. The compiled tree is then evaluated again against a new context, and what it
/// prints is compiled again: neither may change anything.
[[nodiscard]] std::vector<std::string> differencesOf(const Case& tested);

/// The start of a report: place and expression.
[[nodiscard]] std::string titleOf(const Case& tested);

}  // namespace commandfilter::testing
