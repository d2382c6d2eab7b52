#include "TerminalSession.h"

#include <poll.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>
#include <thread>

namespace commandfilter::testing {

namespace {

// Long enough for any machine; what has not happened by then never will.
constexpr std::chrono::seconds kPatience{60};

std::chrono::steady_clock::time_point deadline() {
  return std::chrono::steady_clock::now() + kPatience;
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

TerminalSession::TerminalSession(const std::vector<std::string>& arguments,
                                 const std::vector<std::string>& environment) {
  const std::vector<char*> words = pointersTo(arguments);
  // libedit never frees what it knows of the terminal.
  std::vector<std::string> settings = environment;
  settings.emplace_back("LSAN_OPTIONS=suppressions=" LIBRARY_LEAKS);
  const std::vector<char*> variables = pointersTo(settings);
  winsize size{};
  size.ws_row = 24;
  size.ws_col = 200;
  int terminal = -1;
  process_ = forkpty(&terminal, nullptr, nullptr, &size);
  if (process_ < 0) throw std::system_error(errno, std::generic_category(), "forkpty");
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    execve(words[0], words.data(), variables.data());
    _exit(127);
  }
  terminal_ = FileDescriptor(terminal);
}

TerminalSession::~TerminalSession() {
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

void TerminalSession::type(std::string_view keys) const {
  static_cast<void>(!write(terminal_.get(), keys.data(), keys.size()));
}

bool TerminalSession::readSome(int milliseconds) {
  pollfd channel{terminal_.get(), POLLIN, 0};
  if (poll(&channel, 1, milliseconds) <= 0) return false;
  std::array<char, 4096> buffer{};
  const ssize_t count = read(terminal_.get(), buffer.data(), buffer.size());
  if (count <= 0) return false;
  output_.append(buffer.data(), static_cast<std::size_t>(count));
  return true;
}

bool TerminalSession::find(std::string_view text) {
  const std::size_t found = output_.find(text, seen_);
  if (found == std::string::npos) return false;
  seen_ = found + text.size();
  return true;
}

bool TerminalSession::waitFor(std::string_view text) {
  while (!find(text)) {
    if (!readSome()) return false;
  }
  return true;
}

bool TerminalSession::waitForPrompt() {
  if (!waitFor("> ")) return false;
  // Keys that come before the line is edited may be lost.
  const auto end = deadline();
  termios modes{};
  while (tcgetattr(terminal_.get(), &modes) == 0 && (modes.c_lflag & ICANON) != 0) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

bool TerminalSession::typeUntil(std::string_view keys, std::string_view text) {
  constexpr int kTries = 600;
  constexpr int kMilliseconds = 100;
  for (int i = 0; i < kTries; ++i) {
    type(keys);
    while (readSome(kMilliseconds)) {
      if (find(text)) return true;
    }
  }
  return false;
}

int TerminalSession::finish(std::string_view keys) {
  constexpr int kMilliseconds = 100;
  const auto end = deadline();
  int status = 0;
  while (waitpid(process_, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > end) return -1;
    type(keys);
    readSome(kMilliseconds);
  }
  process_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace commandfilter::testing
