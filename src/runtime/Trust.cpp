#include "runtime/Trust.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/FileDescriptor.h"

namespace commandfilter {

namespace {

constexpr mode_t kPermissions = 07777;

struct CloseFolder {
  void operator()(DIR* folder) const noexcept { closedir(folder); }
};

// realpath's texts come from malloc.
struct FreeText {
  void operator()(char* text) const noexcept {
    std::free(text);  // NOLINT(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
  }
};

std::optional<Distrust> judge(const std::string& path, const struct stat& status, uid_t user) {
  const mode_t mode = status.st_mode & kPermissions;
  if (status.st_uid != 0 && status.st_uid != user) {
    return Distrust{path, Distrust::Reason::Owner, status.st_uid, mode};
  }
  if ((mode & (S_IWGRP | S_IWOTH)) != 0) {
    return Distrust{path, Distrust::Reason::Writable, status.st_uid, mode};
  }
  return std::nullopt;
}

Distrust unknown(const std::string& path) { return {path, Distrust::Reason::Unknown, 0, 0}; }

// What a link leads to in the end, and the folder that this lies in: its writers could put
// something else there. Folders that the way leads through are like those above the path itself.
std::optional<Distrust> judgeLink(const std::string& path, std::string& target, uid_t user) {
  const std::unique_ptr<char, FreeText> found(realpath(path.c_str(), nullptr));
  if (!found) return unknown(path);
  target = found.get();
  struct stat status {};
  const std::string folder = target.substr(0, std::max<std::size_t>(target.rfind('/'), 1));
  if (lstat(folder.c_str(), &status) != 0) return unknown(folder);
  if (auto fault = judge(folder, status, user)) return fault;
  if (lstat(target.c_str(), &status) != 0) return unknown(target);
  return judge(target, status, user);
}

// A walk over a folder and what lies in it.
class Walk {
 public:
  explicit Walk(uid_t user) : user_(user) {}

  std::optional<Distrust> folder(const std::string& path) {
    return folder(AT_FDCWD, path.c_str(), path);
  }

 private:
  // `name` as seen from the folder `parent`: the way there is not walked again for each.
  std::optional<Distrust> folder(int parent, const char* name, const std::string& path) {
    FileDescriptor descriptor(
        openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    struct stat status {};
    if (!descriptor || fstat(descriptor.get(), &status) != 0) return unknown(path);
    if (auto found = judge(path, status, user_)) return found;
    // Links may lead round in a circle.
    const std::pair identity(status.st_dev, status.st_ino);
    if (std::ranges::find(visited_, identity) != visited_.end()) return std::nullopt;
    visited_.push_back(identity);
    const std::unique_ptr<DIR, CloseFolder> entries(fdopendir(descriptor.get()));
    if (!entries) return unknown(path);
    static_cast<void>(descriptor.release());
    while (const dirent* item = readdir(entries.get())) {
      const std::string_view entryName = item->d_name;
      if (entryName == "." || entryName == "..") continue;
      if (auto found = entry(dirfd(entries.get()), path, item->d_name)) return found;
    }
    return std::nullopt;
  }

  std::optional<Distrust> entry(int folderDescriptor, const std::string& parent, const char* name) {
    const std::string path = parent + '/' + name;
    struct stat status {};
    if (fstatat(folderDescriptor, name, &status, AT_SYMLINK_NOFOLLOW) != 0) return unknown(path);
    if (S_ISLNK(status.st_mode)) {
      // A link to nothing holds nothing.
      if (fstatat(folderDescriptor, name, &status, 0) != 0) return std::nullopt;
      std::string target;
      if (auto found = judgeLink(path, target, user_)) return found;
      return S_ISDIR(status.st_mode) ? folder(target) : judge(path, status, user_);
    }
    return S_ISDIR(status.st_mode) ? folder(folderDescriptor, name, path)
                                   : judge(path, status, user_);
  }

  uid_t user_;
  std::vector<std::pair<dev_t, ino_t>> visited_;
};

}  // namespace

std::string Distrust::description() const {
  std::array<char, 8> octal{};
  std::snprintf(octal.data(), octal.size(), "%04o", static_cast<unsigned>(mode));
  const std::string quoted = "'" + path + "'";
  switch (reason) {
    case Reason::Owner:
      return path + " belongs to user " + std::to_string(owner) +
             ", who is neither root nor the filter's user; use: chown root " + quoted;
    case Reason::Writable:
      return path + " can be written by others than its owner (mode " + octal.data() +
             "); use: chmod go-w " + quoted;
    case Reason::Unknown:
      break;
  }
  return path + " cannot be examined; use: chmod a+rX " + quoted;
}

std::optional<Distrust> distrustOf(const std::string& path, uid_t user) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) return unknown(path);
  if (!S_ISLNK(status.st_mode)) return judge(path, status, user);
  std::string target;
  return judgeLink(path, target, user);
}

std::optional<Distrust> distrustOfTree(const std::string& folder, uid_t user) {
  struct stat status {};
  if (lstat(folder.c_str(), &status) != 0) return unknown(folder);
  if (!S_ISLNK(status.st_mode)) return Walk(user).folder(folder);
  std::string target;
  if (auto found = judgeLink(folder, target, user)) return found;
  return Walk(user).folder(target);
}

}  // namespace commandfilter
