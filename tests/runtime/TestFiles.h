// Files in the folder of a test, written shortly.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {

// Writes a file below the folder, in folders that are made as needed. Gives its path.
inline std::string makeFile(const TemporaryFolder& folder, const std::filesystem::path& name,
                            std::string_view bytes) {
  const std::filesystem::path file = folder.path() / name;
  std::filesystem::create_directories(file.parent_path());
  writeFile(file, bytes);
  return file.string();
}

// Makes a fifo below the folder, to which nobody writes. Gives its path.
inline std::string makeFifo(const TemporaryFolder& folder, const std::filesystem::path& name) {
  const std::filesystem::path file = folder.path() / name;
  std::filesystem::create_directories(file.parent_path());
  if (mkfifo(file.c_str(), S_IRUSR | S_IWUSR) != 0) throw std::runtime_error("no fifo was made");
  return file.string();
}

}  // namespace commandfilter::testing
