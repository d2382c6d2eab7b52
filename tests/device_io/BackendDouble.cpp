#include "BackendDouble.h"

#include <cups/sidechannel.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace commandfilter::testing {

BackendDouble::BackendDouble(std::function<void(BackendDouble&, int)> answer)
    : answer_(std::move(answer)) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) std::abort();
  // Neither may be the descriptor itself.
  end_ = FileDescriptor(ends[0] != CUPS_SC_FD ? ends[0] : dup(ends[0]));
  if (ends[1] != CUPS_SC_FD) {
    dup2(ends[1], CUPS_SC_FD);
    close(ends[1]);
  }
  thread_ = std::thread([this] {
    std::array<char, 4> request{};
    while (recv(end_.get(), request.data(), request.size(), 0) > 0) {
      const int before = static_cast<int>(requests_.size());
      requests_.push_back(request[0]);
      answer_(*this, before);
    }
  });
}

BackendDouble::~BackendDouble() { finish(); }

std::string BackendDouble::finish() {
  if (thread_.joinable()) {
    close(CUPS_SC_FD);
    thread_.join();
  }
  return requests_;
}

void BackendDouble::send(int command, int status, const std::string& bytes) {
  constexpr unsigned kByte = 256;
  std::string message{static_cast<char>(command), static_cast<char>(status),
                      static_cast<char>(bytes.size() / kByte),
                      static_cast<char>(bytes.size() % kByte)};
  sendRaw(message + bytes);
}

void BackendDouble::sendRaw(const std::string& bytes) {
  static_cast<void>(::send(end_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL));
}

void BackendDouble::die() { shutdown(end_.get(), SHUT_RDWR); }

}  // namespace commandfilter::testing
