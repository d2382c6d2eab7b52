// A CUPS scheduler of a test's own.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {

/// Starts a scheduler in a temporary folder, and stops it and all its processes at the end; also
/// when the test is killed. Whatever fails throws std::runtime_error with what was said about it.
class PrivateScheduler {
 public:
  /// A line of the error log.
  struct LogLine {
    /// E, W, N, I, D...
    char level = '\0';
    std::string text;
  };

  /// Why no scheduler can be started here, such as packages that are missing; empty when it can.
  [[nodiscard]] static std::string unavailable();
  /// A PPD file that sends command files through the filter `commandfilter`.
  [[nodiscard]] static std::filesystem::path ppd();

  /// `filterEnvironment`: further variables for filters and backends.
  explicit PrivateScheduler(const std::map<std::string, std::string>& filterEnvironment = {});
  PrivateScheduler(const PrivateScheduler&) = delete;
  PrivateScheduler& operator=(const PrivateScheduler&) = delete;
  ~PrivateScheduler();

  [[nodiscard]] const std::filesystem::path& root() const noexcept { return folder_.path(); }
  /// A variable of what clients need: CUPS_SERVER, HOME, PORT, SERVER_BIN, RECORDS, ERROR_LOG...
  [[nodiscard]] const std::string& variable(std::string_view name) const;

  /// Makes a program a filter, under its own name.
  void addFilter(const std::filesystem::path& program) const;
  /// Makes a program a backend, under its own name if no scheme is given.
  void addBackend(const std::filesystem::path& program, const std::string& scheme = {}) const;
  void addQueue(const std::string& queue, const std::string& deviceUri,
                const std::filesystem::path& ppd) const;

  /// Adds a queue with the recording backend, installed for the scheme; the path of its record,
  /// which bears the queue's name. Beside the record the backend finds its script (.script) and
  /// notes what happened (.events).
  [[nodiscard]] std::filesystem::path addRecordingQueue(
      const std::string& queue, const std::filesystem::path& ppd = PrivateScheduler::ppd(),
      const std::string& scheme = "recording") const;

  /// Submits a command file; the job's number. `options`: further arguments of lp.
  [[nodiscard]] int submit(const std::string& queue, const std::filesystem::path& file,
                           const std::vector<std::string>& options = {}) const;
  /// Submits it compressed, so that the queue's filter reads it from standard input.
  [[nodiscard]] int submitCompressed(const std::string& queue,
                                     const std::filesystem::path& file) const;
  /// Waits until a job has ended and its processes are gone; its state: completed, canceled,
  /// aborted, processing-stopped, pending-held, or pending in a queue that has stopped.
  [[nodiscard]] std::string wait(int job) const;
  /// What the error log holds of a job, when the job is over.
  [[nodiscard]] std::vector<LogLine> log(int job) const;
  /// The attributes of a queue; several values of one are separated by commas.
  [[nodiscard]] std::map<std::string, std::string> attributes(const std::string& queue) const;

  /// Runs a client of CUPS (lp, cancel, lpstat...), found in the usual folders, to its end.
  [[nodiscard]] ChildResult client(const std::vector<std::string>& arguments) const;

 private:
  std::string command(std::vector<std::string> arguments) const;

  TemporaryFolder folder_;
  std::map<std::string, std::string, std::less<>> variables_;
};

}  // namespace commandfilter::testing
