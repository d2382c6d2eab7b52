#include "harness/Statistics.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace commandfilter::benchmarks {

namespace {

double quantile(const std::vector<double>& sorted, double share) {
  const double position = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(position);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  const double weight = position - static_cast<double>(below);
  return sorted[below] + weight * (sorted[above] - sorted[below]);
}

}  // namespace

Quartiles quartiles(std::vector<double> values) {
  if (values.empty()) return {};
  std::sort(values.begin(), values.end());
  return {quantile(values, 0.25), quantile(values, 0.5), quantile(values, 0.75)};
}

Quartiles pairedRatios(const std::vector<double>& values, const std::vector<double>& base) {
  std::vector<double> ratios;
  const std::size_t count = std::min(values.size(), base.size());
  ratios.reserve(count);
  for (std::size_t i = 0; i < count; ++i) ratios.push_back(values[i] / base[i]);
  return quartiles(std::move(ratios));
}

}  // namespace commandfilter::benchmarks
