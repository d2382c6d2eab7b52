#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "Launcher.h"

namespace commandfilter::benchmarks {

// Counts the instructions of a whole process with callgrind.
class InstructionCounter {
 public:
  // Nothing when valgrind is not installed.
  static std::optional<InstructionCounter> find(const std::filesystem::path& scratch);

  // The median of a few runs: hashed addresses move the count a little.
  std::uint64_t count(const Launcher& launcher, const Program& program, int runs) const;

 private:
  InstructionCounter(std::filesystem::path valgrind, const std::filesystem::path& scratch);

  std::filesystem::path valgrind_;
  std::filesystem::path output_;
};

}  // namespace commandfilter::benchmarks
