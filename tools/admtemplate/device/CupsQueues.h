// The queues of the scheduler.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace commandfilter::tools {

/// A queue of the scheduler on this machine.
struct CupsQueue {
  std::string name;
  std::string deviceURI;
  /// What its owner calls it; may be empty.
  std::string info;
};

/// All queues with a device, by name; empty when no scheduler answers. Loads libcups.
/// @throws UsageError when there is no libcups.
[[nodiscard]] std::vector<CupsQueue> cupsQueues();

/// The queue of that name; none when there is no such queue.
/// @throws UsageError as `cupsQueues` does.
[[nodiscard]] std::optional<CupsQueue> cupsQueueNamed(const std::string& name);

/// The PPD file of a queue; none when it has none that this user may read.
[[nodiscard]] std::optional<std::string> ppdOfQueue(const std::string& name);

}  // namespace commandfilter::tools
