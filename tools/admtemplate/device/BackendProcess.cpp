#include "device/BackendProcess.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <sstream>
#include <string_view>
#include <thread>
#include <utility>

#include "UsageError.h"
#include "device/BackendFolder.h"
#include "runtime/File.h"

namespace commandfilter::tools {

namespace {

constexpr int kBackChannel = 3;
constexpr int kSideChannel = 4;
// Above the descriptors that the backend's own are put on.
constexpr int kLowest = 10;

[[noreturn]] void refuse(const std::string& uri, const char* what) {
  throw UsageError("device " + uri + ": cannot start its backend: " + what + ": " +
                   std::strerror(errno));
}

FileDescriptor moved(int descriptor) {
  const FileDescriptor from(descriptor);
  return FileDescriptor(fcntl(from.get(), F_DUPFD_CLOEXEC, kLowest));
}

struct Pair {
  FileDescriptor first;
  FileDescriptor second;
};

Pair pipePair(const std::string& uri) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) refuse(uri, "pipe");
  Pair pair{moved(ends[0]), moved(ends[1])};
  if (!pair.first || !pair.second) refuse(uri, "pipe");
  return pair;
}

Pair socketPair(const std::string& uri) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) refuse(uri, "socket");
  Pair pair{moved(ends[0]), moved(ends[1])};
  if (!pair.first || !pair.second) refuse(uri, "socket");
  return pair;
}

// This process's environment with what the scheduler would say about the job.
std::vector<std::string> backendEnvironment(const std::string& uri) {
  std::vector<std::string> variables;
  constexpr std::array<std::string_view, 4> kReplaced{
      "DEVICE_URI=", "CLASS=", "PRINTER=", "CONTENT_TYPE="};
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view text = *variable;
    bool isReplaced = false;
    for (const std::string_view name : kReplaced) isReplaced = isReplaced || text.starts_with(name);
    if (!isReplaced) variables.emplace_back(text);
  }
  variables.push_back("DEVICE_URI=" + uri);
  variables.emplace_back("PRINTER=admtemplate");
  variables.emplace_back("CONTENT_TYPE=application/vnd.cups-command");
  // A backend gives up a printer that it cannot reach when another one of a class could do its
  // work; otherwise it tries again without end.
  variables.emplace_back("CLASS=admtemplate");
  return variables;
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const std::string& text : texts)
    pointers.push_back(const_cast<char*>(text.c_str()));  // NOLINT: execve takes it so
  pointers.push_back(nullptr);
  return pointers;
}

struct Channels {
  int data;
  int side;
  int messages;
  int failure;
};

// Only calls that are safe between fork and exec.
[[noreturn]] void becomeBackend(const char* program, char* const* arguments,
                                char* const* environment, pid_t parent, const Channels& channels) {
  constexpr int kNotStarted = 127;
  // Ctrl-C at a prompt is for the prompt.
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(kNotStarted);
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  dup2(channels.data, STDIN_FILENO);
  dup2(null, STDOUT_FILENO);
  dup2(channels.messages, STDERR_FILENO);
  dup2(null, kBackChannel);
  dup2(channels.side, kSideChannel);
  std::signal(SIGPIPE, SIG_DFL);
  std::signal(SIGINT, SIG_DFL);
  execve(program, arguments, environment);
  const int reason = errno;
  static_cast<void>(!write(channels.failure, &reason, sizeof reason));
  _exit(kNotStarted);
}

}  // namespace

std::unique_ptr<BackendProcess> BackendProcess::start(const std::string& uri) {
  const std::string program = backendOfURI(uri);
  std::unique_ptr<BackendProcess> backend(
      new BackendProcess);  // NOLINT: the constructor is private
  backend->run(program, uri);
  return backend;
}

void BackendProcess::run(const std::string& program, const std::string& uri) {
  Pair data = pipePair(uri);
  Pair side = socketPair(uri);
  Pair failure = pipePair(uri);
  messages_ = moved(memfd_create("backend messages", MFD_CLOEXEC));
  // Backend and tool share a position in it, which reading moves.
  if (!messages_ || fcntl(messages_.get(), F_SETFL, O_APPEND) != 0) {
    refuse(uri, "memory for its messages");
  }

  const std::vector<std::string> variables = backendEnvironment(uri);
  // Job, user, title, copies and options; without a file it reads its standard input.
  const std::vector<std::string> words{uri, "1", "admtemplate", "admtemplate", "1", ""};
  const std::vector<char*> arguments = pointersTo(words);
  const std::vector<char*> environment = pointersTo(variables);
  const pid_t parent = getpid();
  endsWithData_ = schemeOfURI(uri) == "usb";
  process_ = fork();
  if (process_ < 0) refuse(uri, "fork");
  if (process_ == 0) {
    becomeBackend(program.c_str(), arguments.data(), environment.data(), parent,
                  {data.first.get(), side.second.get(), messages_.get(), failure.second.get()});
  }
  data_ = std::move(data.second);
  failure.second = FileDescriptor();
  int reason = 0;
  if (read(failure.first.get(), &reason, sizeof reason) == sizeof reason) {
    throw UsageError("device " + uri + ": cannot run its backend " + program + ": " +
                     std::strerror(reason));
  }
  descriptorBefore_ = FileDescriptor(fcntl(kSideChannel, F_DUPFD_CLOEXEC, kLowest));
  dup3(side.first.get(), kSideChannel, O_CLOEXEC);
}

BackendProcess::~BackendProcess() { end(); }

// At the end of their data most backends would now connect, to print nothing; a signal ends those
// that listen to it. The one for USB gives the device back to the system at the end of its data.
void BackendProcess::end() noexcept {
  if (process_ <= 0) return;
  using namespace std::chrono_literals;
  constexpr auto kPause = 5ms;
  constexpr int kFew = 40;
  constexpr int kMany = 400;
  if (endsWithData_) {
    data_ = FileDescriptor();
  } else {
    kill(-process_, SIGTERM);
  }
  int status = 0;
  pid_t ended = 0;
  for (int i = 0; i < (endsWithData_ ? kMany : kFew) && ended == 0; ++i) {
    ended = waitpid(process_, &status, WNOHANG);
    if (ended == 0) std::this_thread::sleep_for(kPause);
  }
  // What it has started itself goes too.
  kill(-process_, SIGKILL);
  while (ended == 0 && waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  if (descriptorBefore_) {
    dup3(descriptorBefore_.get(), kSideChannel, O_CLOEXEC);
  } else {
    close(kSideChannel);
  }
}

std::vector<std::string> BackendProcess::complaints() const {
  std::vector<std::string> sentences;
  std::string information;
  constexpr std::size_t kMost = 1U << 20U;
  lseek(messages_.get(), 0, SEEK_SET);
  Result<std::string> text = readToEnd(messages_.get(), kMost);
  if (!text) return sentences;
  std::istringstream lines(*text);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t colon = line.find(": ");
    if (colon == std::string::npos) continue;
    const std::string_view kind = std::string_view(line).substr(0, colon);
    std::string sentence = line.substr(colon + 2);
    if (kind == "ERROR" || kind == "CRIT" || kind == "ALERT" || kind == "EMERG" ||
        kind == "WARNING") {
      if (sentences.empty() || sentences.back() != sentence) sentences.push_back(sentence);
    } else if (kind == "INFO" || kind == "NOTICE") {
      information = std::move(sentence);
    }
  }
  if (!information.empty()) sentences.push_back(std::move(information));
  return sentences;
}

}  // namespace commandfilter::tools
