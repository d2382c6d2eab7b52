// Plug-ins that the user names.
#pragma once

#include <string>

namespace commandfilter::tools {

/// Loads a plug-in bundle, whose classes are then found by name.
/// @throws UsageError when there is no bundle at the path, or its code cannot be loaded.
void loadPlugIn(const std::string& path);

}  // namespace commandfilter::tools
