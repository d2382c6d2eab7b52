#include "integration/devices/PrinterListener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace commandfilter::testing {

PrinterListener::PrinterListener(const std::string& address)
    : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), end_(eventfd(0, EFD_CLOEXEC)) {
  sockaddr_in name{};
  name.sin_family = AF_INET;
  inet_pton(AF_INET, address.c_str(), &name.sin_addr);
  auto* generic = reinterpret_cast<sockaddr*>(&name);
  socklen_t size = sizeof name;
  if (bind(socket_.get(), generic, size) != 0 || listen(socket_.get(), 1) != 0 ||
      getsockname(socket_.get(), generic, &size) != 0) {
    throw std::system_error(errno, std::generic_category(), address);
  }
  port_ = ntohs(name.sin_port);
  thread_ = std::thread([this] { serve(); });
}

PrinterListener::~PrinterListener() { finish(); }

std::string PrinterListener::finish() {
  if (thread_.joinable()) {
    eventfd_write(end_.get(), 1);
    thread_.join();
  }
  return received_;
}

void PrinterListener::serve() {
  while (true) {
    // A connection that is waiting is taken before the end.
    std::array<pollfd, 2> watched{{{socket_.get(), POLLIN, 0}, {end_.get(), POLLIN, 0}}};
    if (poll(watched.data(), watched.size(), -1) < 0) continue;
    if (watched[0].revents == 0) return;
    const FileDescriptor connection(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    std::array<char, 4096> buffer{};
    ssize_t count = 0;
    while ((count = read(connection.get(), buffer.data(), buffer.size())) > 0) {
      received_.append(buffer.data(), static_cast<std::size_t>(count));
    }
  }
}

}  // namespace commandfilter::testing
