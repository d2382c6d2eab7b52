#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Summary.h"

namespace commandfilter::benchmarks {

// What a job of ours may cost, as a multiple of what the base costs.
inline constexpr double kInstructionLimit = 1.3;
inline constexpr double kWallLimit = 1.3;
inline constexpr double kMemoryLimit = 1.5;

// How often a job may ask the backend for the device's ID.
inline constexpr double kRequestLimit = 1;

// Of the exponent with which the cost grows with the lines; one is linear.
inline constexpr double kGrowthLimit = 1.15;

// What a value of a template may take, as a multiple of the time of Lua and of jq.
inline constexpr double kLuaLimit = 1.5;
inline constexpr double kJqLimit = 0.5;

struct LimitCheck {
  std::string subject;
  std::string measure;
  std::optional<double> value;  // nothing when it was not measured
  double limit = 0;
  bool binding = true;

  bool exceeded() const { return value && *value > limit; }
  bool fails() const { return binding && (!value || exceeded()); }
};

// Binding only when `strict`: wall time, which is noisy on a shared machine, what was not measured,
// which depends on what is installed, and growth. Growth that is lost in the noise is left out.
std::vector<LimitCheck> checkAgainstBase(const std::vector<Summary>& programs, bool strict);
std::vector<LimitCheck> checkTemplateJob(const Summary& besideLua, const Summary& besideJq,
                                         const std::optional<std::size_t>& cupsLibraries,
                                         bool strict);
std::vector<LimitCheck> checkGrowth(const std::vector<Growth>& growth, bool strict);

}  // namespace commandfilter::benchmarks
