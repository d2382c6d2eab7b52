// What commandfilter-queue status tells.
#pragma once

#include <string>
#include <vector>

#include "Backend.h"
#include "CommandLines.h"
#include "PlugIns.h"
#include "Scheduler.h"

namespace commandfilter::tools {

/// A word of a queue's list of commands.
struct ListedCommand {
  std::string word;
  /// The plug-in that has a line for it; empty when none has.
  std::string plugIn;
};

struct QueueStatus {
  QueueFacts facts;
  CommandLines lines;
  std::vector<ListedCommand> commands;
  Backend backend;
  /// Why it cannot be attached; empty when it can.
  std::string refusal;
};

struct StatusReport {
  Installation installation;
  std::vector<QueueStatus> queues;
};

/// For a person.
[[nodiscard]] std::string plainReport(const StatusReport& report);

/// One JSON object: "application", "folders", "plugIns", "deviceModel" and "queues".
[[nodiscard]] std::string jsonReport(const StatusReport& report);

}  // namespace commandfilter::tools
