#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "comparison/Contender.h"
#include "harness/Statistics.h"

namespace commandfilter::benchmarks {

struct Effort {
  std::size_t rounds = 0;
  // How long one contender works in a round, unless a single operation takes longer.
  double millisecondsEach = 0;
};

// What one contender needs for one operation.
struct Cost {
  double nanoseconds = 0;
  double allocations = 0;
};

enum class Verdict { Informs, Reached, WithinNoise, Missed };

// A measured case.
struct Row {
  std::string name;
  std::optional<double> limit;
  Cost ours;
  Cost lua;
  std::optional<Cost> plain;
  // The ratios are those of the rounds: what disturbs a round disturbs all of it.
  Quartiles ratioToLua;
  std::optional<Quartiles> ratioToPlain;

  // Missed by more than noise: even the better quarter of the rounds is above the limit.
  Verdict verdict() const;
};

// The programs of a case, which give the same.
// @throws std::runtime_error when their results differ.
Contenders compared(const Case& work);

// Measures a case: all contenders in every round, each time in another order. The time is that of
// the processor, so that other programs take none of it.
// @throws std::runtime_error when the results differ.
Row measure(const Case& work, const Effort& effort);

}  // namespace commandfilter::benchmarks
