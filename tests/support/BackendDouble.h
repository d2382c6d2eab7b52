// A backend that speaks the side channel's protocol.
#pragma once

#include <sys/socket.h>

#include <functional>
#include <string>
#include <thread>

#include "runtime/FileDescriptor.h"

namespace commandfilter::testing {

/// Numbers of the protocol: the command that asks for the device ID, and the status of success.
inline constexpr int kGetDeviceID = 4;
inline constexpr int kOK = 1;

/// The other end of a side channel, served by a thread of its own.
class BackendDouble {
 public:
  /// Called for each request, with the number of requests before it.
  using Answer = std::function<void(BackendDouble&, int)>;

  /// A channel that keeps messages apart, as they are when they do not come at the same moment;
  /// with SOCK_STREAM one as CUPS makes it.
  explicit BackendDouble(Answer answer, int type = SOCK_SEQPACKET);
  BackendDouble(const BackendDouble&) = delete;
  BackendDouble& operator=(const BackendDouble&) = delete;
  ~BackendDouble();

  /// The descriptor for the filter.
  [[nodiscard]] int filterEnd() const noexcept { return filterEnd_.get(); }
  /// Puts it where a filter expects it, in this process.
  void install();

  /// Sends an answer to a request of that command.
  void send(int command, int status, const std::string& bytes = "");
  /// Sends bytes as they are.
  void sendRaw(const std::string& bytes);
  /// Goes away, as a backend does that dies.
  void die();

  /// Closes the filter's end and waits until the backend has seen everything.
  /// @return The command codes of all requests, one char each.
  std::string finish();

 private:
  FileDescriptor end_;
  FileDescriptor filterEnd_;
  FileDescriptor installed_;
  Answer answer_;
  std::string requests_;
  std::thread thread_;
};

}  // namespace commandfilter::testing
