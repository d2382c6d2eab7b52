#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "comparison/Contender.h"

namespace commandfilter::benchmarks {

// The device as a Lua data file, and the template as a Lua program over it.
struct LuaFiles {
  std::filesystem::path configuration;
  std::filesystem::path device;
};

// Loads and runs both files in an interpreter that is there already, and computes all values.
std::unique_ptr<Contender> luaCold(const LuaFiles& files);

// Loads both files and runs them, which makes the device's tables and the template's functions. The
// result is how many there are.
std::unique_ptr<Contender> luaReading(const LuaFiles& files);

// Computes all values again in a new session.
std::unique_ptr<Contender> luaWarm(const LuaFiles& files);

// Compiles the program, which is in memory. The result is the number that it is given.
std::unique_ptr<Contender> luaCompilationOf(const std::string& program, std::int64_t expressions);

}  // namespace commandfilter::benchmarks
