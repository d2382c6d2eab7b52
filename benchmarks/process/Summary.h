#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "PairedMeasurement.h"
#include "harness/Statistics.h"

namespace commandfilter::benchmarks {

// One row of a table.
struct Summary {
  std::string name;
  bool ours = false;
  Quartiles wallMs;
  Quartiles wallRatio;
  double cpuMs = 0;
  double cpuRatio = 0;
  long peakKib = 0;
  double memoryRatio = 0;
  std::optional<std::uint64_t> instructions;
  std::optional<double> instructionRatio;
};

Summary summarise(const Series& series, const Series& base);
std::vector<Summary> summarise(const std::vector<Series>& all, std::size_t base);

// What a number of command lines costs beyond a single one, and how that grew: with an exponent of
// one, ten times the lines take ten times as long.
struct Growth {
  long from = 0;
  long to = 0;
  double wallUsPerLine = 0;
  double bytesPerLine = 0;
  std::optional<double> wallExponent;
  std::optional<double> instructionExponent;
};

// `series` begins with the file of a single line; `lines` tells the lines of each.
std::vector<Growth> growth(const std::vector<Series>& series, const std::vector<long>& lines);

}  // namespace commandfilter::benchmarks
