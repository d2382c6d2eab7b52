// The test plug-in Echo.
#pragma once

#include <string>

namespace commandfilter::testing {

/// What a job of the one command Echo says.
inline const std::string kEcho = "echo is born\necho answers: Echo\necho is dead\n";

}  // namespace commandfilter::testing
