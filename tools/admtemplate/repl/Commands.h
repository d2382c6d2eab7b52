// The commands of the prompt.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::tools {

/// A command as the help shows it.
struct PromptCommand {
  std::string_view name;
  /// What follows it; empty when nothing does.
  std::string_view argument;
  std::string_view help;
};

inline constexpr std::array kPromptCommands{
    PromptCommand{":trace", "EXPR", "each step of the evaluation with its value"},
    PromptCommand{":tree", "EXPR", "what binds to what"},
    PromptCommand{":value", "KEY", "a value of the template"},
    PromptCommand{":keys", "", "the values, constants and macros of the template, and the input"},
    PromptCommand{":service", "[NAME]", "the status service that names and paths ask; sets it"},
    PromptCommand{":device", "", "what the device model knows of the device"},
    PromptCommand{":reload", "", "reads the files and asks the device afresh"},
    PromptCommand{":help", "", "this list"},
    PromptCommand{":quit", "", "ends, as Ctrl-D does"},
};

/// Their names.
[[nodiscard]] inline std::vector<std::string> commandWords() {
  std::vector<std::string> words;
  words.reserve(kPromptCommands.size());
  for (const PromptCommand& command : kPromptCommands) words.emplace_back(command.name);
  return words;
}

/// True for a command that an expression follows.
[[nodiscard]] inline bool takesExpression(std::string_view name) {
  for (const PromptCommand& command : kPromptCommands) {
    if (command.name == name) return command.argument == "EXPR";
  }
  return false;
}

}  // namespace commandfilter::tools
