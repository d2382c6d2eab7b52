#include "Launcher.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <sstream>
#include <stdexcept>

namespace commandfilter::benchmarks {

namespace {

[[noreturn]] void fail(const Program& program, const std::string& what) {
  throw std::runtime_error(program.name + " (" + program.path.string() + "): " + what);
}

std::string describe(int waitStatus) {
  if (WIFSIGNALED(waitStatus)) {
    const int number = WTERMSIG(waitStatus);
    return "was killed by signal " + std::to_string(number) +
           (number == SIGKILL ? " (the time limit, perhaps)" : "");
  }
  return "exited with status " + std::to_string(WEXITSTATUS(waitStatus));
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  result.reserve(texts.size() + 1);
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

std::string readToEnd(int descriptor) {
  std::string text;
  std::array<char, 512> buffer{};
  for (;;) {
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

RunResult parse(const Program& program, const std::string& answer) {
  std::istringstream stream(answer);
  std::string word;
  stream >> word;
  if (word == "error") {
    std::string what;
    int error = 0;
    stream >> what >> error;
    fail(program, what + ": " + std::strerror(error));
  }
  RunResult result;
  int status = 0;
  double wallNs = 0;
  double cpuUs = 0;
  stream >> result.pid >> status >> wallNs >> cpuUs >> result.peakKib >> result.launcherKib >>
      result.requests;
  if (word != "ok" || !stream) fail(program, "the launcher answered \"" + answer + "\"");
  if (!WIFEXITED(status) || WEXITSTATUS(status) != program.expectedStatus) {
    fail(program,
         describe(status) + " instead of status " + std::to_string(program.expectedStatus));
  }
  result.wallMs = wallNs / 1e6;
  result.cpuMs = cpuUs / 1e3;
  return result;
}

}  // namespace

RunResult Launcher::run(const Program& program) const { return run(program, Surroundings()); }

RunResult Launcher::run(const Program& program, const Surroundings& surroundings) const {
  std::vector<std::string> arguments = {helper_,
                                        std::to_string(surroundings.timeoutSeconds),
                                        program.standardInput,
                                        surroundings.standardOutput,
                                        surroundings.standardError,
                                        program.deviceID};
  arguments.insert(arguments.end(), program.environment.begin(), program.environment.end());
  arguments.insert(arguments.end(), surroundings.environment.begin(),
                   surroundings.environment.end());
  arguments.insert(arguments.end(), {"--", program.path});
  arguments.insert(arguments.end(), program.arguments.begin(), program.arguments.end());

  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) fail(program, "no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  pid_t pid = 0;
  const int error =
      posix_spawn(&pid, helper_.c_str(), &actions, nullptr, pointers(arguments).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  std::string answer;
  if (error == 0) {
    answer = readToEnd(ends[0]);
    while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  close(ends[0]);
  if (error != 0) fail(program, helper_.string() + ": " + std::strerror(error));
  return parse(program, answer);
}

}  // namespace commandfilter::benchmarks
