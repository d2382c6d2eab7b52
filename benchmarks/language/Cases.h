#pragma once

#include <vector>

#include "comparison/Contender.h"

namespace commandfilter::benchmarks {

// The rows of the comparison, by theme. The limits stand with them.
std::vector<Case> compileCases();
std::vector<Case> evaluateCases();
std::vector<Case> supplyCases();
std::vector<Case> sortCases();
std::vector<Case> aggregateCases();
std::vector<Case> translateCases();
std::vector<Case> setCases();
std::vector<Case> macroCases();

}  // namespace commandfilter::benchmarks
