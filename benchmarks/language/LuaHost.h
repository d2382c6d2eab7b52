#pragma once

#include <memory>
#include <string>

#include "comparison/Contender.h"
#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// Calls a Lua function. The chunk is compiled and run once, with the device as its argument, and
// gives the function; what it prepares in locals is not measured.
std::unique_ptr<Contender> luaEvaluation(const Datum& device, const std::string& chunk);

// Compiles a chunk, which finds the device in the global variable of that name.
std::unique_ptr<Contender> luaCompilation(const Datum& device, const std::string& chunk);

}  // namespace commandfilter::benchmarks
