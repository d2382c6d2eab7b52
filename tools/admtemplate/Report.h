// An evaluation as text.
#pragma once

#include <string>

#include "Evaluation.h"

namespace commandfilter::tools {

/// For a person: each value behind its key, then each error with the expression and carets below
/// the item that raised it.
[[nodiscard]] std::string plainReport(const Outcome& outcome);

/// One JSON object: "values" and "errors" by key; or "value" and "error" of a single expression.
/// Values that are nil are left out.
[[nodiscard]] std::string jsonReport(const Outcome& outcome, bool isSingle);

/// The same as a property list.
[[nodiscard]] std::string propertyListReport(const Outcome& outcome, bool isSingle);

}  // namespace commandfilter::tools
