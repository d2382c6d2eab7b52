#pragma once

#include <string>

namespace commandfilter::benchmarks {

// The template engine in Lua: a chunk that gives a function, which takes the device and a
// description and gives a function, which computes all values in a new session. As with the engine,
// a feature that does not exist is nil, a value is computed once in a session, nil included, and an
// error costs the value that it is in.
std::string luaEngine();

}  // namespace commandfilter::benchmarks
