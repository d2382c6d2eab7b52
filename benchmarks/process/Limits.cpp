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

std::vector<LimitCheck> checkTemplateJob(const Summary& besideLua, const Summary& besideJq,
                                         const std::optional<std::size_t>& cupsLibraries,
                                         bool strict) {
  std::vector<LimitCheck> result;
  result.push_back(
      {besideLua.name, "wall time, x lua", besideLua.wallRatio.median, kLuaLimit, strict});
  result.push_back({besideJq.name, "wall time, x jq", besideJq.wallRatio.median, kJqLimit, strict});
  // No printer is touched.
  LimitCheck check{besideLua.name, "CUPS libraries loaded", std::nullopt, 0, strict};
  if (cupsLibraries) {
    check.value = static_cast<double>(*cupsLibraries);
    check.binding = true;
  }
  result.push_back(check);
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
