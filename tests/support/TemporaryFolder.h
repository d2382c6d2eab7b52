// A folder that is gone after the test.
#pragma once

#include <filesystem>

namespace commandfilter::testing {

/// A new, empty folder of mode 0755 with a short path; removed with all that is in it.
class TemporaryFolder {
 public:
  /// @throws std::system_error when no folder can be made.
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace commandfilter::testing
