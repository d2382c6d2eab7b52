#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// A supply as C++ written for the task would hold it.
struct Supply {
  std::string name;
  std::int64_t level;
};

// Supplies in no order. The levels are the numbers from 0 on, and no name occurs twice, so that
// every way of sorting gives the same list.
std::vector<Supply> makeSupplies(std::size_t count);

// A supply as a map with Name and Level.
Datum toDatum(const Supply& supply);
Datum toDatum(const std::vector<Supply>& supplies);
Datum toDatum(const std::vector<const Supply*>& supplies);
Datum toDatum(const std::vector<std::string>& texts);

}  // namespace commandfilter::benchmarks
