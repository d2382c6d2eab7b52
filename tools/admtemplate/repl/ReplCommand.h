// admtemplate repl
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "Setting.h"

namespace commandfilter::tools {

/// What the user asks `admtemplate repl` for.
struct ReplArguments {
  SettingArguments setting;
  std::optional<std::string> service;
  bool strict = false;
};

/// Carries out lines until they end: from a terminal with a prompt, otherwise as a script, without
/// one. Gives the exit status: 0, or 1 when `strict` is set and a line has failed.
/// @throws UsageError when an argument or a file cannot be used.
[[nodiscard]] int runRepl(const ReplArguments& arguments, std::istream& input, std::ostream& output,
                          std::ostream& messages);

}  // namespace commandfilter::tools
