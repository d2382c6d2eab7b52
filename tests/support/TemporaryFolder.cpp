#include "support/TemporaryFolder.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace commandfilter::testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (fs::temp_directory_path() / "cf.XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), pattern);
  }
  // Programs that run as another user must be able to pass through.
  constexpr mode_t kMode = 0755;
  chmod(pattern.c_str(), kMode);
  path_ = pattern;
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
