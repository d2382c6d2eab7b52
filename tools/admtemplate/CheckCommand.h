// admtemplate check
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace commandfilter::tools {

enum class CheckFormat : std::uint8_t { Text, JSON };

/// What the user asks `admtemplate check` for.
struct CheckArguments {
  std::vector<std::string> templates;
  std::optional<std::string> input;
  std::vector<std::string> plugIns;
  /// The values that somebody asks for; any when there are none.
  std::vector<std::string> keys;
  CheckFormat format = CheckFormat::Text;
};

/// Checks the templates and writes what is wrong with them; files that cannot be used are explained
/// in `messages`. Gives the exit status: 0, 1 when anything was found, 2 when a template cannot be
/// used.
/// @throws UsageError when another argument or file cannot be used.
[[nodiscard]] int runCheck(const CheckArguments& arguments, std::ostream& report,
                           std::ostream& messages);

}  // namespace commandfilter::tools
