// What a recording backend does when it is asked.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::testing {

/// A text file that says how a backend behaves, a line for each time that something happens:
///
///     EVENT [after=SECONDS] [size=BYTES] ACTION
///
/// EVENT is a side-channel command (SOFT_RESET, DRAIN_OUTPUT, GET_BIDI, GET_DEVICE_ID, GET_STATE,
/// SNMP_GET, SNMP_GET_NEXT, GET_CONNECTED), or one with the data of its request (SNMP_GET:.1.3.6),
/// or START, DATA (the first bytes of the job came), END (all of them came). ACTION is one of
///
///     STATUS [TEXT]  answer with a status by name or number (OK, NO_RESPONSE, TOO_BIG, 99) and
///                    the rest of the line, in which \n, \\ and \xHH stand for bytes; size= fills
///                    the text up, or cuts it, to so many bytes
///     silence        no answer
///     exit NUMBER    end with an exit status
///     kill NUMBER    end by a signal
///
/// START, DATA and END cannot be answered. The lines of one event are used one after the other, the
/// last one from then on. What has no line is not implemented. Empty lines and lines that begin
/// with # mean nothing.
class BackendScript {
 public:
  enum class Action { Answer, Silence, Exit, Kill };

  struct Step {
    Action action = Action::Silence;
    std::chrono::milliseconds after{0};
    /// The status of an answer, the number to exit with, or the signal.
    int number = 0;
    std::string text;
  };

  /// Says nothing: every request is not implemented.
  BackendScript() = default;
  /// Reads a script; a file that does not exist says nothing. Throws std::runtime_error with file
  /// and line for a line that means nothing.
  explicit BackendScript(const std::filesystem::path& file);

  /// The step for a request with that data, or for an event without a request; nullptr when the
  /// script has none.
  [[nodiscard]] const Step* next(std::string_view event, std::string_view data = {});

 private:
  struct Steps {
    std::vector<Step> steps;
    std::size_t used = 0;
  };
  std::map<std::string, Steps, std::less<>> events_;
};

}  // namespace commandfilter::testing
