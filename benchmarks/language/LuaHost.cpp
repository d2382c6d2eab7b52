#include "LuaHost.h"

#include <cstdlib>
#include <lua.hpp>
#include <stdexcept>
#include <utility>

#include "Allocations.h"

namespace commandfilter::benchmarks {

namespace {

// Lua's own allocation function, with a count.
void* allocate(void* /*unused*/, void* memory, std::size_t oldSize, std::size_t newSize) {
  if (newSize == 0) {
    std::free(memory);
    return nullptr;
  }
  if (memory == nullptr || newSize > oldSize) Allocations::note();
  return std::realloc(memory, newSize);
}

void push(lua_State* lua, const Datum& datum) {
  if (const auto* string = std::get_if<std::string>(&datum.content)) {
    lua_pushlstring(lua, string->data(), string->size());
  } else if (const auto* integer = std::get_if<std::int64_t>(&datum.content)) {
    lua_pushinteger(lua, *integer);
  } else if (const auto* list = std::get_if<Datum::List>(&datum.content)) {
    lua_createtable(lua, static_cast<int>(list->size()), 0);
    lua_Integer index = 0;
    for (const Datum& element : *list) {
      push(lua, element);
      lua_rawseti(lua, -2, ++index);
    }
  } else if (const auto* map = std::get_if<Datum::Map>(&datum.content)) {
    lua_createtable(lua, 0, static_cast<int>(map->size()));
    for (const auto& [key, value] : *map) {
      push(lua, key);
      push(lua, value);
      lua_rawset(lua, -3);
    }
  } else {
    lua_pushnil(lua);
  }
}

Datum datumAt(lua_State* lua, int index);

// An empty table, and one with a first element, is a list.
Datum datumOfTable(lua_State* lua, int table) {
  lua_pushnil(lua);
  const bool empty = lua_next(lua, table) == 0;
  if (!empty) lua_pop(lua, 2);
  const lua_Unsigned length = lua_rawlen(lua, table);
  if (empty || length != 0) {
    Datum::List list;
    for (lua_Unsigned i = 1; i <= length; ++i) {
      lua_rawgeti(lua, table, static_cast<lua_Integer>(i));
      list.push_back(datumAt(lua, lua_gettop(lua)));
      lua_pop(lua, 1);
    }
    return list;
  }
  Datum::Map map;
  lua_pushnil(lua);
  while (lua_next(lua, table) != 0) {
    const int value = lua_gettop(lua);
    map.emplace_back(datumAt(lua, value - 1), datumAt(lua, value));
    lua_pop(lua, 1);
  }
  return map;
}

Datum datumAt(lua_State* lua, int index) {
  if (lua_isnil(lua, index)) return {};
  if (lua_isinteger(lua, index) != 0) return static_cast<std::int64_t>(lua_tointeger(lua, index));
  if (lua_type(lua, index) == LUA_TSTRING) return lua_tostring(lua, index);
  if (lua_istable(lua, index)) return datumOfTable(lua, index);
  throw std::runtime_error("Lua gave a value of a kind that is not compared");
}

class LuaState {
 public:
  LuaState() : state_(lua_newstate(&allocate, nullptr)) {
    if (!state_) throw std::bad_alloc();
    luaL_openlibs(state_.get());
  }

  lua_State* get() const { return state_.get(); }

  // Leaves the compiled chunk on the stack.
  void load(const std::string& chunk) {
    check(luaL_loadbufferx(get(), chunk.data(), chunk.size(), "=chunk", "t"));
  }
  // Calls what is on the stack under its arguments, and leaves one result.
  void call(int arguments) { check(lua_pcall(get(), arguments, 1, 0)); }
  Datum popDatum() {
    Datum datum = datumAt(get(), lua_gettop(get()));
    lua_pop(get(), 1);
    return datum;
  }

 private:
  struct Close {
    void operator()(lua_State* state) const { lua_close(state); }
  };

  void check(int status) const {
    if (status != LUA_OK) throw std::runtime_error(lua_tostring(get(), -1));
  }

  std::unique_ptr<lua_State, Close> state_;
};

class Evaluation final : public Contender {
 public:
  Evaluation(const Datum& device, const std::string& chunk) {
    lua_.load(chunk);
    push(lua_.get(), device);
    lua_.call(1);
    function_ = luaL_ref(lua_.get(), LUA_REGISTRYINDEX);
  }

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      call();
      lua_pop(lua_.get(), 1);
    }
  }
  Datum result() override {
    call();
    return lua_.popDatum();
  }

 private:
  void call() {
    lua_rawgeti(lua_.get(), LUA_REGISTRYINDEX, function_);
    lua_.call(0);
  }

  LuaState lua_;
  int function_ = LUA_NOREF;
};

class Compilation final : public Contender {
 public:
  Compilation(const Datum& device, std::string chunk) : chunk_(std::move(chunk)) {
    push(lua_.get(), device);
    lua_setglobal(lua_.get(), "device");
  }

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      lua_.load(chunk_);
      lua_pop(lua_.get(), 1);
    }
  }
  Datum result() override {
    lua_.load(chunk_);
    lua_.call(0);
    return lua_.popDatum();
  }

 private:
  LuaState lua_;
  std::string chunk_;
};

}  // namespace

std::unique_ptr<Contender> luaEvaluation(const Datum& device, const std::string& chunk) {
  return std::make_unique<Evaluation>(device, chunk);
}

std::unique_ptr<Contender> luaCompilation(const Datum& device, const std::string& chunk) {
  return std::make_unique<Compilation>(device, chunk);
}

}  // namespace commandfilter::benchmarks
