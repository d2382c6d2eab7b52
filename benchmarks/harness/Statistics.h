#pragma once

#include <vector>

namespace commandfilter::benchmarks {

struct Quartiles {
  double first = 0;
  double median = 0;
  double third = 0;
};

// Interpolated between neighbours; all zero for an empty list.
Quartiles quartiles(std::vector<double> values);

// The quartiles of values[i] / base[i]: what disturbed one round disturbed both sides of it.
Quartiles pairedRatios(const std::vector<double>& values, const std::vector<double>& base);

}  // namespace commandfilter::benchmarks
