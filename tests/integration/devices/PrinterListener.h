// A printer that takes raw data over TCP.
#pragma once

#include <cstdint>
#include <string>
#include <thread>

#include "runtime/FileDescriptor.h"

namespace commandfilter::testing {

/// Listens on a port of the address and keeps what one connection after the other sends.
class PrinterListener {
 public:
  /// @throws std::system_error when nothing can listen there.
  explicit PrinterListener(const std::string& address);
  PrinterListener(const PrinterListener&) = delete;
  PrinterListener& operator=(const PrinterListener&) = delete;
  ~PrinterListener();

  [[nodiscard]] std::uint16_t port() const noexcept { return port_; }
  /// Stops listening, when the connection that is open has ended.
  /// @return All bytes of all connections.
  std::string finish();

 private:
  void serve();

  FileDescriptor socket_;
  /// Readable once nobody wants to listen any more.
  FileDescriptor end_;
  std::uint16_t port_ = 0;
  std::string received_;
  std::thread thread_;
};

}  // namespace commandfilter::testing
