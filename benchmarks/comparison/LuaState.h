#pragma once

#include <filesystem>
#include <lua.hpp>
#include <memory>
#include <string>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// Pushes a Lua value made from the data.
void push(lua_State* lua, const Datum& datum);

// A Lua interpreter whose allocations are counted. Its errors are thrown as std::runtime_error.
class LuaState {
 public:
  LuaState();

  lua_State* get() const { return state_.get(); }

  // Leaves the compiled chunk on the stack.
  void load(const std::string& chunk);
  void loadFile(const std::filesystem::path& file);
  // Calls what is on the stack under its arguments, and leaves one result.
  void call(int arguments);
  Datum popDatum();

 private:
  struct Close {
    void operator()(lua_State* state) const { lua_close(state); }
  };

  void check(int status) const;

  std::unique_ptr<lua_State, Close> state_;
};

}  // namespace commandfilter::benchmarks
