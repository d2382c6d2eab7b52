// A program at a terminal.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

#include "runtime/FileDescriptor.h"

namespace commandfilter::testing {

/// Runs a program with a pseudo-terminal as its terminal. It does not outlive the object.
class TerminalSession {
 public:
  /// `environment`: the whole, as "NAME=value".
  /// @throws std::system_error when it cannot be started.
  TerminalSession(const std::vector<std::string>& arguments,
                  const std::vector<std::string>& environment);
  TerminalSession(const TerminalSession&) = delete;
  TerminalSession& operator=(const TerminalSession&) = delete;
  ~TerminalSession();

  /// Types keys.
  void type(std::string_view keys) const;
  /// Waits until the program has written the text behind what was waited for before. False when it
  /// ends, or takes a minute, without.
  bool waitFor(std::string_view text);
  /// Waits for the prompt, and until keys reach it.
  bool waitForPrompt();
  /// Types keys again and again until the program has written the text. For what follows Ctrl-C:
  /// with the signal the terminal drops what is on its way in and out.
  bool typeUntil(std::string_view keys, std::string_view text);
  /// Waits for its end; the exit status, -1 when a signal ended it. Types the keys until then:
  /// while no line is edited, Ctrl-D is lost.
  int finish(std::string_view keys = {});
  /// All that was written.
  [[nodiscard]] const std::string& output() const noexcept { return output_; }
  [[nodiscard]] pid_t process() const noexcept { return process_; }

 private:
  bool readSome(int milliseconds = 60'000);
  bool find(std::string_view text);

  pid_t process_ = -1;
  FileDescriptor terminal_;
  std::string output_;
  std::size_t seen_ = 0;
};

}  // namespace commandfilter::testing
