#include "device_io/CupsSideChannel.h"

#include <cups/sidechannel.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstring>

#include "filter/environment/CupsLibrary.h"

namespace commandfilter {

namespace {

using Clock = std::chrono::steady_clock;

// In seconds: how long to wait for the answer once the late one to another command has come. The
// backend is free to give it then, and one that means to refuse the message gives none.
constexpr double kPatience = 5;

// A backend that is gone must not take the process with it.
class IgnoredBrokenPipes {
 public:
  IgnoredBrokenPipes() noexcept {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &previous_);
  }
  IgnoredBrokenPipes(const IgnoredBrokenPipes&) = delete;
  IgnoredBrokenPipes& operator=(const IgnoredBrokenPipes&) = delete;
  ~IgnoredBrokenPipes() { sigaction(SIGPIPE, &previous_, nullptr); }

 private:
  struct sigaction previous_ {};
};

// Answers to requests that were given up, whole or cut off: what comes before the question is no
// answer to it.
void discardLateAnswers() noexcept {
  constexpr int kMostReads = 256;
  std::array<char, 4096> late;
  for (int i = 0; i < kMostReads; ++i) {
    if (recv(CUPS_SC_FD, late.data(), late.size(), MSG_DONTWAIT) <= 0) return;
  }
}

// A backend may send any number; an enumeration that holds another than its own must not be read.
SideChannelStatus statusOf(const cups_sc_status_t& status) noexcept {
  int number = 0;
  static_assert(sizeof number == sizeof status);
  std::memcpy(&number, &status, sizeof number);
  return static_cast<SideChannelStatus>(number);
}

// Reads on past the answers to other commands.
SideChannelStatus awaitAnswer(const CupsLibrary& cups, cups_sc_command_t command, char* buffer,
                              int& length, Clock::time_point end) {
  const int room = length;
  while (true) {
    const double left = std::chrono::duration<double>(end - Clock::now()).count();
    cups_sc_command_t answered = CUPS_SC_CMD_NONE;
    cups_sc_status_t status = CUPS_SC_STATUS_NONE;
    length = room;
    if (left <= 0 || cups.sideChannelRead(&answered, &status, buffer, &length, left) != 0) {
      return SideChannelStatus::BadMessage;
    }
    if (answered == command) return statusOf(status);
  }
}

Clock::time_point momentAfter(double seconds) {
  return Clock::now() +
         std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

}  // namespace

SideChannelStatus CupsSideChannel::doRequest(SideChannelCommand command, char* buffer, int& length,
                                             double timeout) {
  const CupsLibrary* cups = CupsLibrary::shared();
  if (cups == nullptr) return SideChannelStatus::IOError;
  const IgnoredBrokenPipes scope;
  discardLateAnswers();
  const int room = length;
  const auto code = static_cast<cups_sc_command_t>(command);
  const Clock::time_point end = momentAfter(timeout);
  SideChannelStatus status = statusOf(cups->sideChannelDoRequest(code, buffer, &length, timeout));
  if (status == SideChannelStatus::BadMessage) {
    // The answer to another request came after the question; that to this one is still due.
    length = room;
    status = awaitAnswer(*cups, code, buffer, length, std::min(end, momentAfter(kPatience)));
  }
  length = status == SideChannelStatus::OK ? std::clamp(length, 0, room) : 0;
  return status;
}

}  // namespace commandfilter
