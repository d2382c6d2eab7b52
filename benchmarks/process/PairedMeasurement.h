#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Launcher.h"

namespace commandfilter::benchmarks {

// What was measured of one program; the values of one round stand at the same index everywhere.
struct Series {
  Program program;
  std::vector<double> wallMs;
  std::vector<double> cpuMs;
  long peakKib = 0;
  std::optional<std::uint64_t> instructions;
};

struct Rounds {
  std::size_t measured = 0;
  std::size_t warmUp = 3;
};

// Runs all programs once a round, in another order each round, so that whatever changes on the
// machine meanwhile falls on all alike.
std::vector<Series> measureInterleaved(const Launcher& launcher,
                                       const std::vector<Program>& programs, Rounds rounds);

}  // namespace commandfilter::benchmarks
