#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace commandfilter::testing {

namespace fs = std::filesystem;

namespace {

/// A process that removes the folders of this one when it has ended, in whatever way: its input
/// then ends.
class FolderGuard {
 public:
  FolderGuard() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, ends[0], STDIN_FILENO);
    // Whoever waits for the end of this process's output must not wait for the guard.
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // Out of reach of what a terminal sends to the test.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    std::string shell = "sh";
    std::string option = "-c";
    std::string script =
        "while IFS= read -r folder; do set -- \"$@\" \"$folder\"; done; rm -rf -- \"$@\"";
    const std::array<char*, 5> arguments = {shell.data(), option.data(), script.data(),
                                            shell.data(), nullptr};
    if (posix_spawn(&process_, "/bin/sh", &files, &attributes, arguments.data(), environ) != 0) {
      process_ = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    close(ends[0]);
    input_ = ends[1];
  }
  FolderGuard(const FolderGuard&) = delete;
  FolderGuard& operator=(const FolderGuard&) = delete;
  ~FolderGuard() {
    close(input_);
    // A copy of the test that was forked is not the guard's parent.
    if (process_ > 0 && getpid() == owner_) waitpid(process_, nullptr, 0);
  }

  void watch(const std::string& folder) const {
    const std::string line = folder + "\n";
    // Without a guard the folder is still removed at the end of the test.
    if (process_ > 0) (void)!write(input_, line.data(), line.size());
  }

 private:
  pid_t owner_ = getpid();
  pid_t process_ = -1;
  int input_ = -1;
};

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (fs::temp_directory_path() / "cf.XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), pattern);
  }
  // Programs that run as another user must be able to pass through.
  constexpr mode_t kMode = 0755;
  chmod(pattern.c_str(), kMode);
  path_ = pattern;
  static const FolderGuard guard;
  guard.watch(pattern);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error;
  // A folder that a test made unreadable would keep its contents.
  constexpr auto kOwner = fs::perms::owner_all;
  for (fs::recursive_directory_iterator entry(path_, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
      fs::permissions(entry->path(), kOwner, fs::perm_options::add, ignored);
    }
  }
  fs::remove_all(path_, error);
}

}  // namespace commandfilter::testing
