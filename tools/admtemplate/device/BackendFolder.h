// The backends of CUPS.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::tools {

/// The folder of the system's backends: `backend` in the folder that the environment variable
/// CUPS_SERVERBIN names, otherwise in that of a usual installation.
[[nodiscard]] std::string backendFolder();

/// The schemes that have a backend there which this user may run, sorted.
[[nodiscard]] std::vector<std::string> usableSchemes();

/// The scheme of a device URI, in small letters; none for what has no scheme.
[[nodiscard]] std::optional<std::string> schemeOfURI(std::string_view uri);

/// The backend for a device URI.
/// @throws UsageError when there is none that this user may run; it says what to do instead.
[[nodiscard]] std::string backendOfURI(const std::string& uri);

}  // namespace commandfilter::tools
