#include "support/BackgroundProcess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>
#include <thread>

namespace commandfilter::testing {

namespace {

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

// Only calls that are safe between fork and exec.
[[noreturn]] void becomeProgram(char* const* arguments, char* const* environment, const char* log,
                                pid_t parent) {
  constexpr int kNotStarted = 127;
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(kNotStarted);
  dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
  dup2(open(log, O_WRONLY | O_CREAT | O_APPEND, 0644), STDOUT_FILENO);
  dup2(STDOUT_FILENO, STDERR_FILENO);
  close_range(STDERR_FILENO + 1, ~0U, 0);
  std::signal(SIGPIPE, SIG_DFL);
  execve(arguments[0], arguments, environment);
  _exit(kNotStarted);
}

}  // namespace

BackgroundProcess::BackgroundProcess(const std::vector<std::string>& arguments,
                                     const std::vector<std::string>& environment,
                                     const std::filesystem::path& log) {
  const std::vector<char*> argumentPointers = pointersTo(arguments);
  const std::vector<char*> environmentPointers = pointersTo(environment);
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (child == 0) {
    becomeProgram(argumentPointers.data(), environmentPointers.data(), log.c_str(), parent);
  }
  // Both sides do it, as either may come first.
  setpgid(child, child);
  process_ = group_ = child;
}

BackgroundProcess::~BackgroundProcess() {
  constexpr int kTurns = 500;
  if (isRunning()) kill(process_, SIGTERM);
  for (int i = 0; i < kTurns && isRunning(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  kill(-group_, SIGKILL);
  if (process_ > 0) waitpid(process_, nullptr, 0);
}

bool BackgroundProcess::isRunning() {
  if (process_ > 0 && waitpid(process_, nullptr, WNOHANG) != 0) process_ = -1;
  return process_ > 0;
}

}  // namespace commandfilter::testing
