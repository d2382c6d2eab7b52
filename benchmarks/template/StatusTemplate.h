#pragma once

#include <string>
#include <vector>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// A template of 100 values, 40 constants and 10 macros, twice.
struct StatusTemplate {
  // For the engine.
  Datum description;
  // The same for a template engine in Lua: a chunk that takes the device and the function that
  // looks a feature up, and gives descriptions of values, whose expressions are functions.
  std::string luaDescription;
  // A Lua program for this one template, which finds everything in the device itself: a chunk that
  // takes the device and gives a function, which computes all values. There is no feature that is
  // missing, and an error would end it.
  std::string luaProgram;
  // The expressions in Lua, where each is one.
  std::vector<std::string> luaExpressions;
};
StatusTemplate statusTemplate();

// Every expression of the template, those of constants and macros included.
std::vector<std::string> expressionsOf(const Datum& description);

}  // namespace commandfilter::benchmarks
