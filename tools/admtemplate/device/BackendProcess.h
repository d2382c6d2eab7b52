// A backend of CUPS that runs beside the tool.
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "runtime/FileDescriptor.h"

namespace commandfilter::tools {

/// Runs the backend of a device as the scheduler runs it beside a filter: the device model finds
/// its side channel at descriptor 4. The backend is never sent a byte to print, so all it does is
/// answer; it ends with the object, and with this process however that ends.
class BackendProcess {
 public:
  /// @throws UsageError when there is no backend for the URI, or it cannot be started.
  [[nodiscard]] static std::unique_ptr<BackendProcess> start(const std::string& uri);

  BackendProcess(const BackendProcess&) = delete;
  BackendProcess& operator=(const BackendProcess&) = delete;
  ~BackendProcess();

  /// What it has complained about so far, a sentence each: its lines that are errors or warnings,
  /// and the information it gave last.
  [[nodiscard]] std::vector<std::string> complaints() const;

 private:
  BackendProcess() = default;
  void run(const std::string& program, const std::string& uri);
  void end() noexcept;

  pid_t process_ = -1;
  bool endsWithData_ = false;
  /// What the backend would print; nothing is ever written to it.
  FileDescriptor data_;
  /// A file without a name that takes what the backend says.
  FileDescriptor messages_;
  /// What descriptor 4 was before; nothing when it was not open.
  FileDescriptor descriptorBefore_;
};

}  // namespace commandfilter::tools
