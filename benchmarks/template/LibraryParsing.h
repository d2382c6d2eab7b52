#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "comparison/Contender.h"

namespace commandfilter::benchmarks {

// Reads property lists and has libplist parse them, without making anything of what it gives: what
// no program that uses the library can go below. The result is how many lists there are.
std::unique_ptr<Contender> libraryParsing(std::vector<std::filesystem::path> files);

}  // namespace commandfilter::benchmarks
