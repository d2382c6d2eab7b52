// A file for as long as its object lives.
#pragma once

#include <string>
#include <string_view>

#include "runtime/FileDescriptor.h"

namespace commandfilter::tools {

/// Lies in TMPDIR, readable by its owner only.
class TemporaryFile {
 public:
  /// With these bytes.
  /// @throws ToolError when it cannot be written.
  explicit TemporaryFile(std::string_view bytes = {});
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  [[nodiscard]] const std::string& path() const noexcept { return path_; }
  [[nodiscard]] int descriptor() const noexcept { return file_.get(); }

 private:
  std::string path_;
  FileDescriptor file_;
};

}  // namespace commandfilter::tools
