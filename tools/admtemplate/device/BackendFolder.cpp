#include "device/BackendFolder.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "UsageError.h"
#include "device/Lists.h"
#include "runtime/ProcessInfo.h"
#include "runtime/Text.h"

namespace commandfilter::tools {

std::string backendFolder() {
  const auto named = ProcessInfo::environmentValue("CUPS_SERVERBIN");
  return (named && !named->empty() ? *named : std::string("/usr/lib/cups")) + "/backend";
}

std::vector<std::string> usableSchemes() {
  std::vector<std::string> schemes;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(backendFolder(), error)) {
    if (access(entry.path().c_str(), X_OK) == 0) schemes.push_back(entry.path().filename());
  }
  std::ranges::sort(schemes);
  return schemes;
}

std::optional<std::string> schemeOfURI(std::string_view uri) {
  const std::string_view scheme = uri.substr(0, uri.find(':'));
  if (scheme.empty() || scheme.size() == uri.size()) return std::nullopt;
  const auto belongs = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '-' || c == '.';
  };
  // A scheme that begins with a full stop would lead out of the folder.
  if (!std::ranges::all_of(scheme, belongs) || scheme.front() == '.') return std::nullopt;
  return lowercase(scheme);
}

std::string backendOfURI(const std::string& uri) {
  const std::string what = "device " + uri + ": ";
  const auto scheme = schemeOfURI(uri);
  if (!scheme) {
    throw UsageError(what + "this is no device URI; write one such as socket://printer.local, or " +
                     "name a device description");
  }
  std::string path = backendFolder() + "/" + *scheme;
  if (access(path.c_str(), F_OK) != 0) {
    throw UsageError(what + "CUPS has no backend " + path + "; it has " + listOf(usableSchemes()) +
                     " (CUPS_SERVERBIN names another folder)");
  }
  if (access(path.c_str(), X_OK) != 0) {
    throw UsageError(what + "the backend " + path +
                     " may be run by its owner only: run this command as root");
  }
  return path;
}

}  // namespace commandfilter::tools
