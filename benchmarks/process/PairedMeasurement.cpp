#include "PairedMeasurement.h"

#include <algorithm>
#include <cstddef>

namespace commandfilter::benchmarks {

namespace {

// The place that comes at `position` of a round, among `count`: from the round's own start one step
// forth, one back, two forth, two back. Every second cycle of rounds goes the other way around.
// So each program follows each other one equally often; what ran before decides what the caches
// hold, and in a plain rotation that would always be the same neighbour.
std::size_t placeAt(std::size_t round, std::size_t position, std::size_t count) {
  const bool backwards = (round / count) % 2 == 1;
  const std::size_t step = backwards ? count - 1 - position : position;
  const std::size_t offset = step % 2 == 1 ? (step + 1) / 2 : count - step / 2;
  return (round + offset) % count;
}

}  // namespace

std::vector<Series> measureInterleaved(const Launcher& launcher,
                                       const std::vector<Program>& programs, Rounds rounds) {
  std::vector<Series> result;
  result.reserve(programs.size());
  for (const Program& program : programs) result.push_back({program, {}, {}, 0, {}});
  for (std::size_t round = 0; round < rounds.warmUp + rounds.measured; ++round) {
    for (std::size_t i = 0; i < result.size(); ++i) {
      Series& series = result[placeAt(round, i, result.size())];
      const RunResult run = launcher.run(series.program);
      if (round < rounds.warmUp) continue;
      series.wallMs.push_back(run.wallMs);
      series.cpuMs.push_back(run.cpuMs);
      series.peakKib = std::max(series.peakKib, run.peakKib);
    }
  }
  return result;
}

}  // namespace commandfilter::benchmarks
