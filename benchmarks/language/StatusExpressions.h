#pragma once

#include <string>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// One expression in the engine's language and in Lua's.
struct StatusExpression {
  std::string ours;
  std::string lua;
};

// What the expressions are about.
Datum statusDevice();

// A conditional with a comparison, a feature path and a concatenation, of 81 characters.
StatusExpression shortExpression();
// Two nested conditionals, of 207 characters.
StatusExpression longExpression();
// As many of these, joined, as make 10,000 characters.
StatusExpression veryLongExpression();

}  // namespace commandfilter::benchmarks
