// The messages that go to and come from the backend.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace commandfilter {

/// What a backend can be asked; the numbers are those of the CUPS side channel.
enum class BackendCommand : int { GetDeviceID = 4, SNMPGet = 6, SNMPGetNext = 7 };

/// The CUPS side channel, message by message.
class BackendMessages {
 public:
  /// The number for a request that was carried out. Backends send other numbers for failures.
  static constexpr int kOK = 1;

  struct Answer {
    /// The number of the command that it answers.
    int command = 0;
    int status = 0;
    std::string data;
  };

  BackendMessages() = default;
  BackendMessages(const BackendMessages&) = delete;
  BackendMessages& operator=(const BackendMessages&) = delete;
  virtual ~BackendMessages() = default;

  /// Sends a request, after dropping the answers that are there already: they came too late for
  /// their own requests. Takes at most so many seconds.
  /// @return false when there is no backend.
  virtual bool send(BackendCommand command, std::string_view data, double timeout) = 0;
  /// The next answer, whatever it answers; none when so many seconds have passed without one, or
  /// the backend is gone.
  virtual std::optional<Answer> receive(double timeout) = 0;
};

}  // namespace commandfilter
