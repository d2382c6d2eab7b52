// A backend that speaks the side channel's protocol.
#pragma once

#include <functional>
#include <string>
#include <thread>

#include "runtime/FileDescriptor.h"

namespace commandfilter::testing {

/// The other end of the side channel, served by a thread of its own. It keeps messages apart, as a
/// backend's answers are when they do not come at the same moment.
class BackendDouble {
 public:
  /// Puts the filter's end on the descriptor of the side channel. Each request is passed to
  /// `answer`, with the number of requests before it.
  explicit BackendDouble(std::function<void(BackendDouble&, int)> answer);
  BackendDouble(const BackendDouble&) = delete;
  BackendDouble& operator=(const BackendDouble&) = delete;
  ~BackendDouble();

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
  std::function<void(BackendDouble&, int)> answer_;
  std::string requests_;
  std::thread thread_;
};

}  // namespace commandfilter::testing
