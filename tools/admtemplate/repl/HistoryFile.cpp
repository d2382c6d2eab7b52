#include "repl/HistoryFile.h"

#include <fcntl.h>

#include <filesystem>
#include <system_error>

#include "runtime/FileDescriptor.h"
#include "runtime/ProcessInfo.h"

namespace commandfilter::tools {

namespace {

// A relative path is no folder of the user's, as the standard for these variables says.
std::optional<std::filesystem::path> stateFolder() {
  const auto state = ProcessInfo::environmentValue("XDG_STATE_HOME");
  if (state && state->starts_with('/')) return *state;
  const auto home = ProcessInfo::environmentValue("HOME");
  if (home && home->starts_with('/')) return std::filesystem::path(*home) / ".local" / "state";
  return std::nullopt;
}

}  // namespace

std::optional<std::string> historyFile() {
  const auto state = stateFolder();
  if (!state) return std::nullopt;
  const std::filesystem::path folder = *state / "admtemplate";
  std::error_code error;
  if (std::filesystem::create_directories(folder, error)) {
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
  }
  std::string path = folder / "history";
  constexpr int kOwnersOnly = 0600;
  const FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kOwnersOnly));
  if (!file || !std::filesystem::is_regular_file(path, error)) return std::nullopt;
  return path;
}

}  // namespace commandfilter::tools
