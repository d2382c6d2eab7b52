#include "runtime/File.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string_view>

#include "runtime/FileDescriptor.h"

namespace commandfilter {

namespace {

struct CloseFolder {
  void operator()(DIR* folder) const noexcept { closedir(folder); }
};

std::string describeError(const std::string& what) { return what + ": " + std::strerror(errno); }

// `fileSize` is that of a regular file; 0 when it is not known, as for files of the kernel.
Result<std::string> readToEnd(int descriptor, std::size_t limit, off_t fileSize) {
  constexpr std::size_t kFirstRoom = 4096;
  std::string bytes;
  std::size_t used = 0;
  if (fileSize > 0) {
    // One byte more, so that the read that finds the end needs no growth. A file that is too long
    // shows it with its first bytes: the descriptor may stand near its end.
    const auto size = static_cast<std::size_t>(fileSize);
    bytes.resize(size <= limit ? size + 1 : kFirstRoom);
  }
  while (true) {
    if (used == bytes.size()) bytes.resize(std::max(kFirstRoom, bytes.size() * 2));
    const ssize_t received = read(descriptor, bytes.data() + used, bytes.size() - used);
    if (received < 0) {
      if (errno == EINTR) continue;
      return Failure{describeError("cannot be read")};
    }
    used += static_cast<std::size_t>(received);
    if (used > limit) return Failure{"longer than " + std::to_string(limit) + " bytes"};
    // What is all of a file needs no read that finds its end.
    if (received == 0 || static_cast<off_t>(used) == fileSize) break;
  }
  bytes.resize(used);
  return bytes;
}

}  // namespace

Result<std::string> readToEnd(int descriptor, std::size_t limit) {
  struct stat status {};
  const bool isKnown = fstat(descriptor, &status) == 0;
  return readToEnd(descriptor, limit, isKnown && S_ISREG(status.st_mode) ? status.st_size : 0);
}

Result<std::string> readRegularFile(const std::string& path, std::size_t limit) {
  // Opening a fifo would wait for a writer without O_NONBLOCK; regular files do not heed it.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file) return Failure{describeError("cannot be opened")};
  struct stat status {};
  if (fstat(file.get(), &status) != 0) return Failure{describeError("cannot be examined")};
  if (!S_ISREG(status.st_mode)) return Failure{"is not a regular file"};
  return readToEnd(file.get(), limit, status.st_size);
}

bool isRegularFile(const std::string& path) noexcept {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isFolder(const std::string& path) noexcept {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::vector<std::string> entriesOfFolder(const std::string& folder) {
  std::vector<std::string> paths;
  const std::unique_ptr<DIR, CloseFolder> entries(opendir(folder.c_str()));
  if (!entries) return paths;
  while (const dirent* entry = readdir(entries.get())) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    paths.push_back(folder + '/' + std::string(name));
  }
  return paths;
}

}  // namespace commandfilter
