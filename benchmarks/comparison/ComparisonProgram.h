#pragma once

#include <string>
#include <vector>

#include "comparison/Contender.h"

namespace commandfilter::benchmarks {

// The main function of a program that measures these cases, in their order.
int runComparison(int argc, char** argv, const std::string& description,
                  const std::vector<Case>& cases);

}  // namespace commandfilter::benchmarks
