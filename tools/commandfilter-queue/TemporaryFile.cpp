#include "TemporaryFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "ToolError.h"

namespace commandfilter::tools {

TemporaryFile::TemporaryFile(std::string_view bytes) {
  std::error_code error;
  path_ = (std::filesystem::temp_directory_path(error) / "commandfilter-queue.XXXXXX").string();
  file_ = FileDescriptor(mkstemp(path_.data()));
  const auto fail = [this] {
    throw ToolError(ExitStatus::Scheduler,
                    path_ + ": " + std::strerror(errno) + "; name a folder with room in TMPDIR");
  };
  if (!file_) fail();
  while (!bytes.empty()) {
    const ssize_t written = write(file_.get(), bytes.data(), bytes.size());
    if (written < 0) {
      unlink(path_.c_str());
      fail();
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

TemporaryFile::~TemporaryFile() { unlink(path_.c_str()); }

}  // namespace commandfilter::tools
