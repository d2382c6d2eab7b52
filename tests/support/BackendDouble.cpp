#include "support/BackendDouble.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace commandfilter::testing {

namespace {

constexpr int kSideChannel = 4;
// Above the descriptors that mean something to a filter.
constexpr int kLowest = 20;

FileDescriptor raised(int descriptor) {
  const FileDescriptor original(descriptor);
  return FileDescriptor(fcntl(original.get(), F_DUPFD_CLOEXEC, kLowest));
}

}  // namespace

BackendDouble::BackendDouble(Answer answer, int type) : answer_(std::move(answer)) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw std::system_error(errno, std::generic_category(), "socketpair");
  }
  end_ = raised(ends[0]);
  filterEnd_ = raised(ends[1]);
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

void BackendDouble::install() { installed_ = FileDescriptor(dup2(filterEnd_.get(), kSideChannel)); }

std::string BackendDouble::finish() {
  installed_ = FileDescriptor();
  filterEnd_ = FileDescriptor();
  if (thread_.joinable()) thread_.join();
  return requests_;
}

void BackendDouble::send(int command, int status, const std::string& bytes) {
  constexpr unsigned kByte = 256;
  const std::string head{static_cast<char>(command), static_cast<char>(status),
                         static_cast<char>(bytes.size() / kByte),
                         static_cast<char>(bytes.size() % kByte)};
  sendRaw(head + bytes);
}

void BackendDouble::sendRaw(const std::string& bytes) {
  static_cast<void>(::send(end_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL));
}

void BackendDouble::die() { shutdown(end_.get(), SHUT_RDWR); }

}  // namespace commandfilter::testing
