// Reading files whole.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "runtime/Export.h"
#include "runtime/Result.h"

namespace commandfilter {

/// All bytes from an open descriptor to its end, blocking as long as that takes. The descriptor
/// stays open. Fails when reading fails or when there are more than `limit` bytes.
[[nodiscard]] COMMANDFILTER_EXPORT Result<std::string> readToEnd(int descriptor, std::size_t limit);

/// All bytes of a regular file. Never blocks on a fifo or a device: what is no regular file is
/// refused.
[[nodiscard]] COMMANDFILTER_EXPORT Result<std::string> readRegularFile(const std::string& path,
                                                                       std::size_t limit);

/// True when the path leads to a regular file.
[[nodiscard]] COMMANDFILTER_EXPORT bool isRegularFile(const std::string& path) noexcept;
/// True when the path leads to a folder.
[[nodiscard]] COMMANDFILTER_EXPORT bool isFolder(const std::string& path) noexcept;
/// The paths of all that lies in a folder, hidden files too, in the order of the file system; none
/// when it is no folder or cannot be listed.
[[nodiscard]] COMMANDFILTER_EXPORT std::vector<std::string> entriesOfFolder(
    const std::string& folder);

}  // namespace commandfilter
