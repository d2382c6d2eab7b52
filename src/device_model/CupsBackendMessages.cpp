#include "device_model/CupsBackendMessages.h"

#include <cups/sidechannel.h>
#include <sys/socket.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <vector>

#include "device_model/CupsFunctions.h"

namespace commandfilter {

namespace {

// What a message can hold at most: its length is a 16-bit number. Room for less would lose answers
// and cost another round trip.
constexpr std::size_t kRoom = 65535;

// Writing to a backend that has ended must not end this process.
class IgnoredBrokenPipe {
 public:
  IgnoredBrokenPipe() noexcept {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &before_);
  }
  IgnoredBrokenPipe(const IgnoredBrokenPipe&) = delete;
  IgnoredBrokenPipe& operator=(const IgnoredBrokenPipe&) = delete;
  ~IgnoredBrokenPipe() { sigaction(SIGPIPE, &before_, nullptr); }

 private:
  struct sigaction before_ {};
};

bool hasBackend() noexcept {
  int domain = 0;
  socklen_t size = sizeof domain;
  return getsockopt(CUPS_SC_FD, SOL_SOCKET, SO_DOMAIN, &domain, &size) == 0 && domain == AF_UNIX;
}

// A backend may send any number; an enumeration that holds another than its own must not be read.
int numberOf(const cups_sc_status_t& status) noexcept {
  int number = 0;
  static_assert(sizeof number == sizeof status);
  std::memcpy(&number, &status, sizeof number);
  return number;
}

void dropWhatIsThere() noexcept {
  // Bounded: a backend may send faster than this reads.
  constexpr int kMost = 256;
  std::array<char, 4096> late;  // NOLINT(cppcoreguidelines-pro-type-member-init): read over
  for (int i = 0; i < kMost && recv(CUPS_SC_FD, late.data(), late.size(), MSG_DONTWAIT) > 0; ++i) {
  }
}

}  // namespace

bool CupsBackendMessages::send(BackendCommand command, std::string_view data, double timeout) {
  if (!hasBackend()) return false;
  static const auto write = cupsFunction<decltype(&cupsSideChannelWrite)>("cupsSideChannelWrite");
  if (write == nullptr) return false;
  const IgnoredBrokenPipe scope;
  dropWhatIsThere();
  return write(static_cast<cups_sc_command_t>(command), CUPS_SC_STATUS_NONE, data.data(),
               static_cast<int>(data.size()), timeout) == 0;
}

std::optional<BackendMessages::Answer> CupsBackendMessages::receive(double timeout) {
  static const auto read = cupsFunction<decltype(&cupsSideChannelRead)>("cupsSideChannelRead");
  if (read == nullptr) return std::nullopt;
  std::vector<char> buffer(kRoom);
  int length = kRoom;
  cups_sc_command_t command = CUPS_SC_CMD_NONE;
  cups_sc_status_t status = CUPS_SC_STATUS_NONE;
  if (read(&command, &status, buffer.data(), &length, timeout) != 0) return std::nullopt;
  // The length means something only when the answer was taken.
  const bool taken = numberOf(status) == kOK && length > 0 && length <= static_cast<int>(kRoom);
  return Answer{
      command, numberOf(status),
      taken ? std::string(buffer.data(), static_cast<std::size_t>(length)) : std::string()};
}

}  // namespace commandfilter
