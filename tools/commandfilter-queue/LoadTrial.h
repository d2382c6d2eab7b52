// Loading a bundle where nothing can come of it.
#pragma once

#include <string>

#include "PlugIns.h"

namespace commandfilter::tools {

/// Loads the bundle in another process, as the filter's user where this process may become that
/// user. `isExecutorWanted`: it must have a class that carries out commands.
/// @return why the filter cannot use it; empty when it can.
[[nodiscard]] std::string loadFailureAs(const FilterUser& user, const std::string& bundle,
                                        bool isExecutorWanted);

}  // namespace commandfilter::tools
