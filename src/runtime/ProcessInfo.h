// What this process was started with.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "runtime/Export.h"

namespace commandfilter {

/// The arguments and environment of a process.
class COMMANDFILTER_EXPORT ProcessInfo {
 public:
  /// This process. Its arguments are those that `main` recorded; none before.
  [[nodiscard]] static const ProcessInfo& processInfo();
  /// Records the arguments of `main`, the program's name included. Called once, first thing.
  static void recordArguments(std::span<char* const> arguments);

  /// Bytes as they were given, the program's name first.
  [[nodiscard]] const std::vector<std::string>& arguments() const noexcept { return arguments_; }
  /// The value of an environment variable; none when it is not set. An empty value is a value.
  [[nodiscard]] static std::optional<std::string> environmentValue(const char* name);

 private:
  static ProcessInfo& shared();
  std::vector<std::string> arguments_;
};

}  // namespace commandfilter
