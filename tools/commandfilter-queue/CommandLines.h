// The lines of a PPD that say who carries out commands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "PPDText.h"

namespace commandfilter::tools {

/// Who carries out a queue's commands, as its PPD says.
struct CommandLines {
  /// The filters that the scheduler may choose from; empty when it refuses command files.
  std::vector<std::string> filters;
  /// True when the only filter is one that the scheduler adds by itself to PostScript printers.
  bool isImplied = false;
  /// True when this project's filter is among them.
  bool isAttached = false;
  /// True when `attachCommands` wrote lines of the file.
  bool isMarked = false;
  /// What the PPD lists under cupsCommands, words in their order; "none" is an empty list.
  std::vector<std::string> commands;
};

/// What a PPD says as it is.
[[nodiscard]] CommandLines commandLinesOf(const PPDText& ppd);

/// The PPD with this project's filter for command files, and with a list of commands that has its
/// own and `commands`. The lines that are changed for it stay as comments; nothing else changes,
/// byte for byte. A PPD that is attached already gives itself, or itself with a longer list.
/// @throws ToolError when marks of an earlier change have been damaged.
[[nodiscard]] std::string attachCommands(std::string_view ppd,
                                         const std::vector<std::string>& commands);

/// The PPD as it was before `attachCommands`; also without lines for this project's filter that
/// somebody else wrote.
/// @throws ToolError when the marks of the change have been damaged.
[[nodiscard]] std::string detachCommands(std::string_view ppd);

/// The word that stands for a plug-in's command line in a list of commands: its first. Empty when
/// it has none that a PPD can hold.
[[nodiscard]] std::string listedWord(std::string_view commandLine);

/// The two lists after each other, without words that differ only in case from one before.
[[nodiscard]] std::vector<std::string> unitedWords(std::vector<std::string> words,
                                                   const std::vector<std::string>& more);

}  // namespace commandfilter::tools
