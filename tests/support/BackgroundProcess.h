// Programs that run beside a test.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace commandfilter::testing {

/// A program that runs until the object goes, with all that it started in its process group; it
/// does not outlive this process either.
class BackgroundProcess {
 public:
  /// Starts the program with these arguments, the first of which is its path, and this whole
  /// environment ("NAME=value"). What it writes goes to the log.
  /// @throws std::system_error when no process can be made.
  BackgroundProcess(const std::vector<std::string>& arguments,
                    const std::vector<std::string>& environment, const std::filesystem::path& log);
  BackgroundProcess(const BackgroundProcess&) = delete;
  BackgroundProcess& operator=(const BackgroundProcess&) = delete;
  ~BackgroundProcess();

  /// False when the program has ended, or could not be started.
  [[nodiscard]] bool isRunning();

 private:
  /// -1 when it has ended.
  pid_t process_ = -1;
  pid_t group_ = -1;
};

}  // namespace commandfilter::testing
