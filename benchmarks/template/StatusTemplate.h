#pragma once

#include <string>
#include <vector>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// A template of 100 values, 40 constants and 10 macros, twice.
struct StatusTemplate {
  // For the engine.
  Datum description;
  // A Lua chunk that takes the device and gives a function, which computes all values and gives
  // them by key. Constants and macros are locals; values that others name are computed once.
  std::string lua;
};
StatusTemplate statusTemplate();

// Every expression of the template, those of constants and macros included.
std::vector<std::string> expressionsOf(const Datum& description);

}  // namespace commandfilter::benchmarks
