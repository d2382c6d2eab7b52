// A queue whose PPD this program may change.
#pragma once

#include <string>

#include "Scheduler.h"

namespace commandfilter::tools {

/// The queue's PPD.
/// @throws ToolError when there is none that can be changed: a raw queue, one that the scheduler
/// made from what the printer says of itself, one of another server, a PPD that cannot be read.
[[nodiscard]] std::string changeablePPD(Scheduler& scheduler, const QueueFacts& queue);

}  // namespace commandfilter::tools
