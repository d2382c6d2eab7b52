// A folder of a test's own.
#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace commandfilter::testing {

/// Goes with everything in it when the object does.
class TestFolder {
 public:
  TestFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "runtime-tests-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder could be made");
    path_ = pattern;
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;
  ~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

  /// Writes a file, in folders that are made as needed, and gives its path.
  std::string write(const std::filesystem::path& name, std::string_view bytes) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file.string();
  }

  /// Makes a fifo that nobody writes to, and gives its path.
  [[nodiscard]] std::string makeFifo(const std::filesystem::path& name) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    if (mkfifo(file.c_str(), S_IRUSR | S_IWUSR) != 0) throw std::runtime_error("no fifo");
    return file.string();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace commandfilter::testing
