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
  /// Its template is the first word that is no option's.
  SettingArguments setting;
  /// The template as an option; then the first word is a key like the others.
  std::optional<std::string> namedTemplate;
  std::vector<std::string> keys;
  std::optional<std::string> expression;
  std::optional<std::string> service;
  ReportFormat format = ReportFormat::Text;
  bool strict = false;
};

/// Evaluates and writes the report; what the report has no place for goes to `messages`. Gives the
/// exit status: 0, or 1 when `strict` is set and something failed.
/// @throws UsageError when an argument or a file cannot be used.
[[nodiscard]] int runEval(const EvalArguments& given, std::ostream& report, std::ostream& messages);

}  // namespace commandfilter::tools
