// What the tools say of arguments that they cannot use.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace commandfilter::tools {

/// Names the tool, the command and the remedy. For CLI::App::failure_message.
[[nodiscard]] inline std::string explainArguments(const CLI::App* tool, const CLI::Error& error) {
  const std::vector<CLI::App*> chosen = tool->get_subcommands();
  if (!chosen.empty()) {
    const std::string command = tool->get_name() + " " + chosen.front()->get_name();
    return command + ": " + error.what() + "; see " + command + " --help\n";
  }
  const std::vector<std::string> rest = tool->remaining();
  std::string text = tool->get_name() + ": ";
  text += rest.empty() ? "name a command" : "there is no command " + rest.front();
  text += "; take one of";
  for (const CLI::App* command : tool->get_subcommands(nullptr)) text += ' ' + command->get_name();
  return text + '\n';
}

}  // namespace commandfilter::tools
