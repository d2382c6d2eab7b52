// The way to the backend that runs beside the filter.
#pragma once

namespace commandfilter {

/// What can be asked; the numbers are those of the side channel.
enum class SideChannelCommand : int { GetDeviceID = 4 };

/// How a request ended. Backends send other numbers too, which mean failures of other kinds.
enum class SideChannelStatus : int {
  OK = 1,
  IOError = 2,
  Timeout = 3,
  BadMessage = 5,
  TooBig = 6,
};

/// Asks the backend, one request at a time.
class SideChannel {
 public:
  SideChannel() = default;
  SideChannel(const SideChannel&) = delete;
  SideChannel& operator=(const SideChannel&) = delete;
  virtual ~SideChannel() = default;

  /// Sends a request and waits for its answer, at most `timeout` seconds.
  /// @param buffer Receives the answer.
  /// @param length The room in the buffer, in bytes; afterwards the bytes received when the status
  /// is OK, and of no meaning otherwise.
  [[nodiscard]] virtual SideChannelStatus doRequest(SideChannelCommand command, char* buffer,
                                                    int& length, double timeout) = 0;
};

}  // namespace commandfilter
