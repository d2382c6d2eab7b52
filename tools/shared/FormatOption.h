// The option --format of the tools.
#pragma once

#include <CLI/CLI.hpp>
#include <map>
#include <string>

namespace commandfilter::tools {

/// Adds the option, which takes a name of the map in small or capital letters, and says which there
/// are when it is another.
template <typename Format>
void addFormatOption(CLI::App& command, Format& format, const std::string& help,
                     const std::map<std::string, Format>& formats) {
  const auto formatNamed = [formats](std::string& text) -> std::string {
    const auto found = formats.find(CLI::detail::to_lower(text));
    if (found != formats.end()) {
      text = std::to_string(static_cast<int>(found->second));
      return {};
    }
    std::string problem = "there is no format " + text + "; take one of";
    for (const auto& [name, meaning] : formats) problem += ' ' + name;
    return problem;
  };
  command.add_option("--format", format, help)
      ->type_name("FORMAT")
      ->transform(CLI::Validator(formatNamed, ""));
}

}  // namespace commandfilter::tools
