#include "Summary.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace commandfilter::benchmarks {

namespace {

Quartiles extraWallMs(const Series& series, const Series& single) {
  std::vector<double> differences;
  const std::size_t count = std::min(series.wallMs.size(), single.wallMs.size());
  for (std::size_t i = 0; i < count; ++i) {
    differences.push_back(series.wallMs[i] - single.wallMs[i]);
  }
  return quartiles(std::move(differences));
}

// Nothing where the cost is lost in the noise.
std::optional<double> clearMedian(const Quartiles& values) {
  if (values.third - values.first > values.median / 2) return std::nullopt;
  return values.median;
}

std::optional<double> extraInstructions(const Series& series, const Series& single) {
  if (!series.instructions || !single.instructions) return std::nullopt;
  return static_cast<double>(*series.instructions) - static_cast<double>(*single.instructions);
}

std::optional<double> exponent(std::optional<double> before, std::optional<double> after,
                               double factor) {
  if (!before || !after || *before <= 0 || *after <= 0) return std::nullopt;
  return std::log(*after / *before) / std::log(factor);
}

}  // namespace

Summary summarise(const Series& series, const Series& base) {
  Summary row;
  row.name = series.program.name;
  row.ours = series.program.ours;
  row.wallMs = quartiles(series.wallMs);
  row.wallRatio = pairedRatios(series.wallMs, base.wallMs);
  row.cpuMs = quartiles(series.cpuMs).median;
  row.cpuRatio = pairedRatios(series.cpuMs, base.cpuMs).median;
  row.peakKib = series.peakKib;
  row.memoryRatio = static_cast<double>(series.peakKib) / static_cast<double>(base.peakKib);
  row.instructions = series.instructions;
  if (series.instructions && base.instructions) {
    row.instructionRatio =
        static_cast<double>(*series.instructions) / static_cast<double>(*base.instructions);
  }
  return row;
}

std::vector<Summary> summarise(const std::vector<Series>& all, std::size_t base) {
  std::vector<Summary> result;
  result.reserve(all.size());
  for (const Series& series : all) result.push_back(summarise(series, all[base]));
  return result;
}

std::vector<Growth> growth(const std::vector<Series>& series, const std::vector<long>& lines) {
  std::vector<Growth> result;
  for (std::size_t i = 1; i < series.size(); ++i) {
    const Series& single = series.front();
    const auto count = static_cast<double>(lines[i]);
    const Quartiles wallMs = extraWallMs(series[i], single);
    Growth step;
    step.from = lines[i - 1];
    step.to = lines[i];
    step.wallUsPerLine = wallMs.median * 1e3 / count;
    step.bytesPerLine = static_cast<double>(series[i].peakKib - single.peakKib) * 1024 / count;
    if (i > 1) {
      const double factor = count / static_cast<double>(lines[i - 1]);
      step.wallExponent =
          exponent(clearMedian(extraWallMs(series[i - 1], single)), clearMedian(wallMs), factor);
      step.instructionExponent = exponent(extraInstructions(series[i - 1], single),
                                          extraInstructions(series[i], single), factor);
    }
    result.push_back(step);
  }
  return result;
}

}  // namespace commandfilter::benchmarks
