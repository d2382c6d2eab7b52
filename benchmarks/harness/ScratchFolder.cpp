#include "harness/ScratchFolder.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace commandfilter::benchmarks {

ScratchFolder::ScratchFolder() {
  std::string name = std::filesystem::temp_directory_path() / "benchmark.XXXXXX";
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
  // What the programs see of themselves is a resolved path.
  path_ = std::filesystem::canonical(name);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path ScratchFolder::write(const std::string& name, const std::string& text) const {
  std::filesystem::path file = path_ / name;
  writeFile(file, text);
  return file;
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  if (!stream) throw std::runtime_error("cannot read " + path.string());
  return text.str();
}

void writeFile(const std::filesystem::path& path, const std::string& text) {
  std::ofstream stream(path, std::ios::binary);
  stream << text;
  if (!stream.flush()) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace commandfilter::benchmarks
