// Files of tests.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace commandfilter::testing {

/// Writes a file of exactly these bytes, replacing one that is there.
/// @throws std::runtime_error when it cannot be written.
void writeFile(const std::filesystem::path& path, std::string_view bytes);

/// The bytes of a file.
/// @throws std::runtime_error when it cannot be read.
[[nodiscard]] std::string readFile(const std::filesystem::path& path);

}  // namespace commandfilter::testing
