#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace commandfilter::benchmarks {

// A command line, with what surrounds it.
struct Program {
  std::string name;
  std::filesystem::path path;
  std::vector<std::string> arguments;  // the name that the program is called by comes first
  std::filesystem::path standardInput = "/dev/null";
  int expectedStatus = 0;
  bool ours = false;
  std::vector<std::string> environment = {};  // NAME=VALUE, or NAME to take it away
  std::string deviceID = {};                  // what a backend answers at once; empty: no backend
};

struct RunResult {
  pid_t pid = 0;
  double wallMs = 0;
  double cpuMs = 0;
  long peakKib = 0;
  long launcherKib = 0;
  int requests = 0;  // to the backend
};

// Runs programs through process_launcher, one at a time, from exec to exit.
class Launcher {
 public:
  struct Surroundings {
    std::filesystem::path standardOutput = "/dev/null";
    std::filesystem::path standardError = "/dev/null";
    std::vector<std::string> environment;  // NAME=VALUE, for the program alone
    int timeoutSeconds = 60;
  };

  explicit Launcher(std::filesystem::path helper) : helper_(std::move(helper)) {}

  // Throws when the program did not end with the status that is expected of it: the figures of
  // a program that failed mean nothing.
  RunResult run(const Program& program, const Surroundings& surroundings) const;
  RunResult run(const Program& program) const;

 private:
  std::filesystem::path helper_;
};

}  // namespace commandfilter::benchmarks
