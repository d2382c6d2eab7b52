// commandfilter-queue attach, detach and status
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "ToolError.h"

namespace commandfilter::tools {

/// What the user asks for.
struct Arguments {
  std::optional<std::string> server;
  std::optional<std::string> user;
  std::optional<std::string> application;
  std::optional<std::string> filterUser;
  std::vector<std::string> queues;
  /// All queues, instead of those named.
  bool all = false;
  bool json = false;
};

/// Attaches the queues and says what was done. One that cannot be does not keep the others from it;
/// `messages` tells of it, and the status is that of the first.
/// @throws ToolError when nothing can be done.
[[nodiscard]] ExitStatus attach(const Arguments& arguments, std::ostream& report,
                                std::ostream& messages);

/// Detaches the queues in the same way, or with `all` each that is attached.
/// @throws ToolError
[[nodiscard]] ExitStatus detach(const Arguments& arguments, std::ostream& report,
                                std::ostream& messages);

/// Reports on the queues, or on all when none is named, and on what the filter would load.
/// @throws ToolError
void status(const Arguments& arguments, std::ostream& report);

}  // namespace commandfilter::tools
