#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include "Launcher.h"

namespace commandfilter::benchmarks {

struct LoadedObjects {
  std::size_t all = 0;
  std::size_t inFolder = 0;
};

// The paths of the shared objects that one run of a program loads, as the dynamic loader itself
// tells. Nothing when the loader tells nothing.
std::optional<std::set<std::string>> loadedObjects(const Launcher& launcher, const Program& program,
                                                   const std::filesystem::path& scratch);

// Counts them, and those of them that lie below a folder.
std::optional<LoadedObjects> countLoadedObjects(const Launcher& launcher, const Program& program,
                                                const std::filesystem::path& folder,
                                                const std::filesystem::path& scratch);

}  // namespace commandfilter::benchmarks
