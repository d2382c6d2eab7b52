// Why the tool cannot do what it was asked for.
#pragma once

#include <stdexcept>
#include <string>

namespace commandfilter::tools {

/// The exit statuses of commandfilter-queue.
enum class ExitStatus {
  Done = 0,
  /// The queue is not there, or of a kind that cannot be attached.
  Refused = 1,
  /// The arguments make no sense.
  Usage = 2,
  /// The scheduler does not answer, or failed.
  Scheduler = 3,
  /// The scheduler does not let this user do it.
  NotPermitted = 4,
};

/// Ends the tool with a status; the message says what is wrong and what would help.
class ToolError : public std::runtime_error {
 public:
  ToolError(ExitStatus status, const std::string& message)
      : std::runtime_error(message), status_(status) {}

  [[nodiscard]] ExitStatus status() const noexcept { return status_; }

 private:
  ExitStatus status_;
};

}  // namespace commandfilter::tools
