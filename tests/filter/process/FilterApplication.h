// The filter program in an application bundle of a test's own.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

namespace commandfilter::testing {

/// What one run of the program is given. By default a complete command job whose command file is
/// named by the seventh argument.
struct Job {
  Job() = default;
  explicit Job(std::string text) : commandFile(std::move(text)) {}

  /// The bytes of the command file.
  std::string commandFile;
  /// True to hand the command file over on standard input.
  bool onInput = false;
  /// Another path for the seventh argument, instead of that of the command file.
  std::optional<std::string> path;
  /// The arguments before the path, the program's name included.
  std::vector<std::string> arguments{"Queue", "1", "user", "title", "1", "options"};
  std::map<std::string, std::string> environment{
      {"DEVICE_URI", "socket://printer.example:9100"},
      {"PRINTER", "Queue"},
      {"CONTENT_TYPE", "application/vnd.cups-command"},
  };
  /// The descriptors that are closed before the program starts.
  std::vector<int> closed;
  /// The descriptor of the side channel; -1 for /dev/null.
  int sideChannel = -1;
  /// Called once the program runs, with its process; may be empty.
  std::function<void(pid_t)> started;
  /// The file to start, when it is not the program in its bundle.
  std::optional<std::filesystem::path> program;
};

/// What one run left.
struct Outcome {
  /// None when the program did not end by itself.
  std::optional<int> status;
  /// The signal that ended it; 0 for none.
  int signal = 0;
  std::string output;
  std::string errors;
  long peakKilobytes = 0;
};

/// An application bundle with the program, its plug-in folders, and a place for files.
class FilterApplication {
 public:
  FilterApplication();

  [[nodiscard]] const std::filesystem::path& root() const { return root_.path(); }
  [[nodiscard]] std::filesystem::path contents() const { return root() / "Test.app" / "Contents"; }
  [[nodiscard]] std::filesystem::path program() const {
    return contents() / "Linux" / "commandfilter";
  }

  /// A new plug-in folder behind those that are there.
  std::filesystem::path addFolder();
  /// Puts a bundle of the build, named without "Test", into a new plug-in folder.
  void addPlugIn(const std::string& name);
  /// The same for its built-in folder.
  void addBuiltInPlugIn(const std::string& name);

  [[nodiscard]] Outcome run(const Job& job) const;
  /// A run of a job with this command file; the header is put before it.
  [[nodiscard]] Outcome runCommands(const std::string& commands) const {
    return run(Job("#CUPS-COMMAND\n" + commands));
  }

 private:
  TemporaryFolder root_;
  std::vector<std::string> locations_;
};

}  // namespace commandfilter::testing
