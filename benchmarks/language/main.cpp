// Measures the expression language: the engine beside Lua 5.4 and beside C++ written for the task,
// in one process and on the same data.

#include <utility>
#include <vector>

#include "Cases.h"
#include "comparison/ComparisonProgram.h"

namespace commandfilter::benchmarks {

namespace {

std::vector<Case> allCases() {
  std::vector<Case> all;
  for (const auto& theme : {compileCases, evaluateCases, supplyCases, sortCases, aggregateCases,
                            translateCases, setCases, macroCases}) {
    for (Case& each : theme()) all.push_back(std::move(each));
  }
  return all;
}

}  // namespace

}  // namespace commandfilter::benchmarks

int main(int argc, char** argv) {
  using namespace commandfilter::benchmarks;  // NOLINT(google-build-using-namespace)
  return runComparison(argc, argv,
                       "The expression language beside Lua 5.4 and beside C++ written for the task",
                       allCases());
}
