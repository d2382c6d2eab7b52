#pragma once

#include <memory>
#include <string>

#include "comparison/Contender.h"
#include "comparison/Datum.h"
#include "runtime/Value.h"

namespace commandfilter::benchmarks {

// What an expression is compiled and evaluated with.
struct Surroundings {
  // The device: a map from names to texts, numbers, lists and maps.
  Datum device;
  // Macros: a map from names to expressions.
  Datum macros = Datum::Map();
};

// Evaluates an expression that is compiled already.
std::unique_ptr<Contender> engineEvaluation(const Surroundings& surroundings,
                                            const std::string& expression);
// Compiles an expression.
std::unique_ptr<Contender> engineCompilation(const Surroundings& surroundings,
                                             const std::string& expression);

}  // namespace commandfilter::benchmarks
