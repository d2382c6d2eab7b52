#include "support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <string_view>
#include <system_error>
#include <utility>

#include "runtime/FileDescriptor.h"

namespace commandfilter::testing {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void throwError(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

struct Pipe {
  FileDescriptor reading;
  FileDescriptor writing;
};

// Both ends above the descriptors that the child's own are put on.
Pipe openPipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throwError("pipe2");
  const FileDescriptor reading(ends[0]);
  const FileDescriptor writing(ends[1]);
  constexpr int kLowest = 20;
  Pipe pipe{FileDescriptor(fcntl(reading.get(), F_DUPFD_CLOEXEC, kLowest)),
            FileDescriptor(fcntl(writing.get(), F_DUPFD_CLOEXEC, kLowest))};
  if (!pipe.reading || !pipe.writing) throwError("fcntl");
  return pipe;
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

// Only calls that are safe between fork and exec.
[[noreturn]] void becomeProgram(const ChildOptions& options, char* const* arguments,
                                char* const* environment, pid_t parent, int input, int output,
                                int errors) {
  constexpr int kBackChannel = 3;
  constexpr int kSideChannel = 4;
  constexpr int kNotStarted = 127;
  setpgid(0, 0);
  // What a terminal sends to the test does not reach this group.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(kNotStarted);
  const int null = open("/dev/null", O_RDWR);
  dup2(input, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  dup2(errors, STDERR_FILENO);
  dup2(null, kBackChannel);
  dup2(options.sideChannel >= 0 ? options.sideChannel : null, kSideChannel);
  if (null > kSideChannel) close(null);
  for (const int descriptor : options.closed) close(descriptor);
  std::signal(SIGPIPE, SIG_DFL);
  execve(options.program.c_str(), arguments, environment);
  _exit(kNotStarted);
}

// Reads what there is; closes the descriptor at its end.
void drain(FileDescriptor& descriptor, std::string& bytes) {
  std::array<char, 65536> buffer;
  const ssize_t received = read(descriptor.get(), buffer.data(), buffer.size());
  if (received > 0) {
    bytes.append(buffer.data(), static_cast<std::size_t>(received));
  } else if (received == 0 || errno != EINTR) {
    descriptor = FileDescriptor();
  }
}

// Writes what fits; closes the descriptor when all is written or nobody reads.
void feed(FileDescriptor& descriptor, std::string_view& bytes) {
  const ssize_t sent = write(descriptor.get(), bytes.data(), bytes.size());
  if (sent >= 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
  const bool retry = sent < 0 && (errno == EINTR || errno == EAGAIN);
  if (bytes.empty() || (sent < 0 && !retry)) descriptor = FileDescriptor();
}

// Serves the three pipes until the program has closed its own; false when the time is over.
bool exchange(const ChildOptions& options, FileDescriptor& input, FileDescriptor& output,
              FileDescriptor& errors, ChildResult& result) {
  const Clock::time_point end = Clock::now() + options.timeLimit;
  std::string_view toSend = options.input;
  if (toSend.empty()) input = FileDescriptor();
  while (output || errors) {
    std::array<pollfd, 3> channels{
        {{output.get(), POLLIN, 0}, {errors.get(), POLLIN, 0}, {input.get(), POLLOUT, 0}}};
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    if (left.count() <= 0) return false;
    if (poll(channels.data(), channels.size(), static_cast<int>(left.count())) < 0) continue;
    if (output && channels[0].revents != 0) drain(output, result.output);
    if (errors && channels[1].revents != 0) drain(errors, result.errors);
    if (input && channels[2].revents != 0) feed(input, toSend);
  }
  return true;
}

}  // namespace

ChildResult runChild(const ChildOptions& options) {
  Pipe input = openPipe();
  Pipe output = openPipe();
  Pipe errors = openPipe();
  const std::vector<char*> arguments = pointersTo(options.arguments);
  const std::vector<char*> environment = pointersTo(options.environment);
  // A child that does not read must not kill the test.
  std::signal(SIGPIPE, SIG_IGN);
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) throwError("fork");
  if (child == 0) {
    becomeProgram(options, arguments.data(), environment.data(), parent, input.reading.get(),
                  output.writing.get(), errors.writing.get());
  }
  input.reading = FileDescriptor();
  output.writing = FileDescriptor();
  errors.writing = FileDescriptor();
  fcntl(input.writing.get(), F_SETFL, O_NONBLOCK);
  if (options.started) options.started(child);

  ChildResult result;
  result.timedOut = !exchange(options, input.writing, output.reading, errors.reading, result);
  if (result.timedOut) kill(-child, SIGKILL);
  int status = 0;
  rusage usage{};
  while (wait4(child, &status, 0, &usage) < 0 && errno == EINTR) {
  }
  // What the program started must not outlive the test either.
  kill(-child, SIGKILL);
  result.peakKilobytes = usage.ru_maxrss;
  if (WIFEXITED(status)) {
    result.exitStatus = WEXITSTATUS(status);
  } else {
    result.signal = WTERMSIG(status);
  }
  return result;
}

}  // namespace commandfilter::testing
