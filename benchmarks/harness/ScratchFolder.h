#pragma once

#include <filesystem>
#include <string>

namespace commandfilter::benchmarks {

// A temporary folder that goes with its owner.
class ScratchFolder {
 public:
  ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder();

  const std::filesystem::path& path() const { return path_; }

  // Writes a file into the folder and returns its path.
  std::filesystem::path write(const std::string& name, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& text);

}  // namespace commandfilter::benchmarks
