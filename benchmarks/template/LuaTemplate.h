#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "comparison/Contender.h"

namespace commandfilter::benchmarks {

// The device as a Lua data file, and the template as one or as a program of its own.
struct LuaFiles {
  std::filesystem::path device;
  std::filesystem::path configuration;
  // The template engine; empty for a program that needs none.
  std::string engine;
};

// Loads and runs both files in an interpreter that is there already, and computes all values.
std::unique_ptr<Contender> luaCold(const LuaFiles& files);

// Loads both files and runs them, which makes the device's tables and the template's functions. The
// result is how many there are.
std::unique_ptr<Contender> luaReading(const LuaFiles& files);

// Computes all values again in a new session.
std::unique_ptr<Contender> luaWarm(const LuaFiles& files);

// Compiles chunks, which are in memory. The result is the number that it is given.
std::unique_ptr<Contender> luaCompilationOf(std::vector<std::string> chunks, std::int64_t result);

}  // namespace commandfilter::benchmarks
