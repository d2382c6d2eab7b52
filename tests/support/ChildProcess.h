// Programs that a test runs.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace commandfilter::testing {

/// How a program is started.
struct ChildOptions {
  /// The file to run.
  std::string program;
  /// All arguments, the program's name first; it may differ from the file.
  std::vector<std::string> arguments;
  /// The whole environment, as "NAME=value".
  std::vector<std::string> environment;
  /// What the program reads on standard input.
  std::string input;
  /// Descriptors from 0 to 4 that are not open when the program starts. Without this, 3 and 4 lead
  /// to /dev/null.
  std::vector<int> closed;
  /// What the program has as its descriptor 4; -1 for /dev/null.
  int sideChannel = -1;
  /// Called once the program has been started, with its process; may be empty.
  std::function<void(pid_t)> started;
  /// When this has passed, the program and what it started are killed.
  std::chrono::seconds timeLimit{120};
};

/// How a program ended.
struct ChildResult {
  /// -1 when it did not exit by itself.
  int exitStatus = -1;
  /// The signal that ended it; 0 when it exited.
  int signal = 0;
  bool timedOut = false;
  std::string output;
  std::string errors;
  /// The largest resident set, in KiB.
  long peakKilobytes = 0;
};

/// Runs a program to its end, in a process group of its own.
/// @throws std::system_error when it cannot be started.
[[nodiscard]] ChildResult runChild(const ChildOptions& options);

}  // namespace commandfilter::testing
