// Whether others than root and this user can change a file.
#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <optional>
#include <string>

#include "runtime/Export.h"

namespace commandfilter {

/// Why what lies at a path must not be run or believed.
struct Distrust {
  enum class Reason {
    /// It belongs to a user who is neither root nor the one of this process.
    Owner,
    /// Its group or everybody may write to it.
    Writable,
    /// It cannot be examined.
    Unknown,
  };

  /// The file or folder that is at fault.
  std::string path;
  Reason reason = Reason::Unknown;
  /// Its owner and its permission bits; neither has a meaning when the reason is `Unknown`.
  uid_t owner = 0;
  mode_t mode = 0;

  /// One sentence: the path, what is wrong with it, and the command that mends it.
  [[nodiscard]] COMMANDFILTER_EXPORT std::string description() const;
};

/// Why a file or folder cannot be trusted; none when it belongs to root or to the user of this
/// process, or to another `user`, and neither its group nor everybody may write to it. A link
/// stands for what it leads to; the folder that this lies in counts too.
[[nodiscard]] COMMANDFILTER_EXPORT std::optional<Distrust> distrustOf(const std::string& path,
                                                                      uid_t user = geteuid());

/// The first file or folder that cannot be trusted among a folder and everything below it, links
/// followed. Whoever can write to one of them could replace what is loaded from there.
[[nodiscard]] COMMANDFILTER_EXPORT std::optional<Distrust> distrustOfTree(const std::string& folder,
                                                                          uid_t user = geteuid());

}  // namespace commandfilter
