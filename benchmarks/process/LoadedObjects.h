#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>

#include "Launcher.h"

namespace commandfilter::benchmarks {

struct LoadedObjects {
  std::size_t all = 0;
  std::size_t inFolder = 0;
};

// Counts the shared objects that one run of a program loads, and those of them that lie below a
// folder, as the dynamic loader itself tells. Nothing when the loader tells nothing.
std::optional<LoadedObjects> countLoadedObjects(const Launcher& launcher, const Program& program,
                                                const std::filesystem::path& folder,
                                                const std::filesystem::path& scratch);

}  // namespace commandfilter::benchmarks
