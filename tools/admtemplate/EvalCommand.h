// admtemplate eval
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "Setting.h"

namespace commandfilter::tools {

enum class ReportFormat { Text, JSON, PropertyList };

/// What the user asks `admtemplate eval` for.
struct EvalArguments {
  SettingArguments setting;
  std::vector<std::string> keys;
  std::optional<std::string> expression;
  std::optional<std::string> service;
  ReportFormat format = ReportFormat::Text;
  bool strict = false;
};

/// Evaluates and writes the report; what the report has no place for goes to `messages`. Gives the
/// exit status: 0, or 1 when `strict` is set and something failed.
/// @throws UsageError when an argument or a file cannot be used.
[[nodiscard]] int runEval(const EvalArguments& arguments, std::ostream& report,
                          std::ostream& messages);

}  // namespace commandfilter::tools
