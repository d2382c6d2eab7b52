// Where the prompt's history is kept.
#pragma once

#include <optional>
#include <string>

namespace commandfilter::tools {

/// The path of the file, which this user alone can read: `admtemplate/history` in the folder that
/// XDG_STATE_HOME names, otherwise in `.local/state` of the home folder. Makes folders and file.
/// None when that is not possible; a prompt works without.
[[nodiscard]] std::optional<std::string> historyFile();

}  // namespace commandfilter::tools
