// A CUPS backend that writes what it gets to a file and serves the side channel by a script.
//
//   recording:///absolute/path/of/the/record
//
// Beside the record: RECORD.script (see BackendScript), if there is one, and RECORD.events, a line
// for each thing that happened: start, request COMMAND [DATA], answer COMMAND STATUS SIZE
// (numbers), data (the first bytes came), end SIZE (all of them came), exit NUMBER, kill NUMBER.
// Record and events are those of the last run.
#include <cups/backend.h>
#include <cups/cups.h>
#include <cups/sidechannel.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "BackendScript.h"

namespace commandfilter::testing {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kMaximumData = 65535;

std::string_view nameOf(cups_sc_command_t command) {
  switch (command) {
    case CUPS_SC_CMD_SOFT_RESET:
      return "SOFT_RESET";
    case CUPS_SC_CMD_DRAIN_OUTPUT:
      return "DRAIN_OUTPUT";
    case CUPS_SC_CMD_GET_BIDI:
      return "GET_BIDI";
    case CUPS_SC_CMD_GET_DEVICE_ID:
      return "GET_DEVICE_ID";
    case CUPS_SC_CMD_GET_STATE:
      return "GET_STATE";
    case CUPS_SC_CMD_SNMP_GET:
      return "SNMP_GET";
    case CUPS_SC_CMD_SNMP_GET_NEXT:
      return "SNMP_GET_NEXT";
    case CUPS_SC_CMD_GET_CONNECTED:
      return "GET_CONNECTED";
    default:
      return "UNKNOWN";
  }
}

std::string recordOf(const char* deviceUri) {
  std::array<char, 32> scheme{};
  std::array<char, 256> user{};
  std::array<char, 256> host{};
  std::array<char, 1024> resource{};
  int port = 0;
  if (deviceUri == nullptr ||
      httpSeparateURI(HTTP_URI_CODING_ALL, deviceUri, scheme.data(), scheme.size(), user.data(),
                      user.size(), host.data(), host.size(), &port, resource.data(),
                      resource.size()) < HTTP_URI_STATUS_OK) {
    throw std::runtime_error("the device URI cannot be read");
  }
  const std::string path(resource.data());
  if (path.size() < 2 || path.back() == '/') {
    throw std::runtime_error("the device URI names no file: recording:///absolute/path");
  }
  return path.substr(0, path.find('?'));
}

void writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) {
      throw std::system_error(errno, std::generic_category(), "the record");
    }
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

int openNew(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), path);
  return descriptor;
}

/// One run of the backend: one job.
class RecordingBackend {
 public:
  RecordingBackend(const std::string& record, int input)
      : record_(openNew(record)),
        events_(openNew(record + ".events")),
        script_(record + ".script"),
        input_(input) {}

  /// Until the data end, or the script says so; the exit status.
  int run() {
    note("start");
    happened("START");
    while (input_ >= 0 || endPending_) {
      std::array<pollfd, 2> watched = {{{input_, POLLIN, 0}, {sideChannel_, POLLIN, 0}}};
      const int count = ::poll(watched.data(), watched.size(), timeToNextStep());
      if (count < 0 && errno != EINTR) {
        throw std::system_error(errno, std::generic_category(), "poll");
      }
      if (const std::optional<int> status = takeDueSteps()) return *status;
      if (count <= 0) continue;
      if (watched[1].revents != 0) serveRequest((watched[1].revents & POLLHUP) != 0);
      if (watched[0].revents != 0) takeData();
    }
    if (const std::optional<int> status = takeDueSteps()) return *status;
    note("exit 0");
    return 0;
  }

 private:
  struct Pending {
    Clock::time_point due;
    BackendScript::Step step;
    cups_sc_command_t command = CUPS_SC_CMD_NONE;
  };

  void note(const std::string& event) { writeAll(events_, event + "\n"); }

  void schedule(const BackendScript::Step& step, cups_sc_command_t command) {
    if (step.action == BackendScript::Action::Silence) return;
    Clock::time_point due = Clock::now() + step.after;
    if (step.action == BackendScript::Action::Answer) {
      // A backend answers one request after the other.
      due = lastAnswer_ = std::max(due, lastAnswer_);
    }
    pending_.push_back({due, step, command});
  }

  bool happened(std::string_view event) {
    const BackendScript::Step* step = script_.next(event);
    if (step != nullptr) schedule(*step, CUPS_SC_CMD_NONE);
    return step != nullptr;
  }

  [[nodiscard]] int timeToNextStep() const {
    if (pending_.empty()) return -1;
    const auto first = std::min_element(pending_.begin(), pending_.end(),
                                        [](auto& a, auto& b) { return a.due < b.due; });
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(first->due - Clock::now());
    return std::max(0, static_cast<int>(left.count()));
  }

  std::optional<int> takeDueSteps() {
    const Clock::time_point now = Clock::now();
    for (std::size_t i = 0; i < pending_.size();) {
      if (pending_[i].due > now) {
        ++i;
        continue;
      }
      const Pending due = pending_[i];
      pending_.erase(pending_.begin() + static_cast<std::ptrdiff_t>(i));
      const std::string number = std::to_string(due.step.number);
      switch (due.step.action) {
        case BackendScript::Action::Answer:
          answer(due.command, static_cast<cups_sc_status_t>(due.step.number), due.step.text);
          break;
        case BackendScript::Action::Exit:
          note("exit " + number);
          return due.step.number;
        case BackendScript::Action::Kill:
          note("kill " + number);
          ::raise(due.step.number);
          break;
        case BackendScript::Action::Silence:
          break;
      }
    }
    return std::nullopt;
  }

  void answer(cups_sc_command_t command, cups_sc_status_t status, const std::string& text) {
    note("answer " + std::string(nameOf(command)) + " " + std::to_string(status) + " " +
         std::to_string(text.size()));
    cupsSideChannelWrite(command, status, text.data(), static_cast<int>(text.size()), 1.0);
  }

  void serveRequest(bool hungUp) {
    cups_sc_command_t command = CUPS_SC_CMD_NONE;
    cups_sc_status_t status = CUPS_SC_STATUS_NONE;
    std::string data(kMaximumData, '\0');
    int size = kMaximumData;
    if (cupsSideChannelRead(&command, &status, data.data(), &size, 0.0) != 0) {
      // A closed channel is ready to be read for ever.
      if (hungUp) sideChannel_ = -1;
      return;
    }
    data.resize(status == CUPS_SC_STATUS_TOO_BIG ? 0 : static_cast<std::size_t>(size));
    std::string shown = data.substr(0, data.find('\0'));
    std::replace(shown.begin(), shown.end(), '\n', ' ');
    note("request " + std::string(nameOf(command)) + (shown.empty() ? "" : " " + shown));
    if (const BackendScript::Step* step = script_.next(nameOf(command), data)) {
      schedule(*step, command);
    } else {
      BackendScript::Step none;
      none.action = BackendScript::Action::Answer;
      none.number = CUPS_SC_STATUS_NOT_IMPLEMENTED;
      schedule(none, command);
    }
  }

  void takeData() {
    std::array<char, 65536> buffer;
    const ssize_t count = ::read(input_, buffer.data(), buffer.size());
    if (count < 0) {
      if (errno == EINTR || errno == EAGAIN) return;
      throw std::system_error(errno, std::generic_category(), "the data");
    }
    if (count == 0) {
      note("end " + std::to_string(size_));
      input_ = -1;
      endPending_ = happened("END");
      return;
    }
    if (size_ == 0) {
      note("data");
      happened("DATA");
    }
    size_ += static_cast<std::size_t>(count);
    writeAll(record_, std::string_view(buffer.data(), static_cast<std::size_t>(count)));
  }

  int record_;
  int events_;
  BackendScript script_;
  int input_;
  int sideChannel_ = CUPS_SC_FD;
  std::size_t size_ = 0;
  bool endPending_ = false;
  Clock::time_point lastAnswer_;
  std::vector<Pending> pending_;
};

int runBackend(int argc, char** argv) {
  if (argc == 1) {
    std::puts(R"(file recording "Unknown" "Recording of print data")");
    return CUPS_BACKEND_OK;
  }
  if (argc < 6 || argc > 7) {
    std::fprintf(stderr, "Usage: %s job-id user title copies options [file]\n", argv[0]);
    return CUPS_BACKEND_FAILED;
  }
  // A filter that goes away must not take the record with it.
  std::signal(SIGPIPE, SIG_IGN);
  try {
    int input = STDIN_FILENO;
    if (argc == 7) input = ::open(argv[6], O_RDONLY | O_CLOEXEC);
    if (input < 0) throw std::system_error(errno, std::generic_category(), argv[6]);
    return RecordingBackend(recordOf(cupsBackendDeviceURI(argv)), input).run();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ERROR: %s\n", error.what());
    return CUPS_BACKEND_FAILED;
  }
}

}  // namespace

}  // namespace commandfilter::testing

int main(int argc, char** argv) { return commandfilter::testing::runBackend(argc, argv); }
