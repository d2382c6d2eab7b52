#include "Limits.h"

#include <utility>

namespace commandfilter::benchmarks {

std::vector<LimitCheck> checkAgainstBase(const std::vector<Summary>& programs, bool strict) {
  std::vector<LimitCheck> result;
  for (const Summary& row : programs) {
    if (!row.ours) continue;
    result.push_back({row.name, "instructions", row.instructionRatio, kInstructionLimit,
                      strict || row.instructionRatio});
    result.push_back({row.name, "peak memory", row.memoryRatio, kMemoryLimit, true});
    result.push_back({row.name, "wall time", row.wallRatio.median, kWallLimit, strict});
  }
  return result;
}

std::vector<LimitCheck> checkGrowth(const std::vector<Growth>& growth, bool strict) {
  std::vector<LimitCheck> result;
  for (const Growth& step : growth) {
    const std::string subject =
        std::to_string(step.from) + " to " + std::to_string(step.to) + " lines";
    for (const auto& [measure, value] :
         {std::pair("exponent, instructions", step.instructionExponent),
          std::pair("exponent, wall time", step.wallExponent)}) {
      if (value) result.push_back({subject, measure, value, kGrowthLimit, strict});
    }
  }
  return result;
}

}  // namespace commandfilter::benchmarks
