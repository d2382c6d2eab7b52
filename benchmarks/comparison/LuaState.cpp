#include "comparison/LuaState.h"

#include <cstdlib>
#include <new>
#include <stdexcept>

#include "comparison/Allocations.h"

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
  // The engine's booleans are numbers.
  if (lua_isboolean(lua, index)) return lua_toboolean(lua, index);
  if (lua_isinteger(lua, index) != 0) return static_cast<std::int64_t>(lua_tointeger(lua, index));
  if (lua_type(lua, index) == LUA_TSTRING) return lua_tostring(lua, index);
  if (lua_istable(lua, index)) return datumOfTable(lua, index);
  throw std::runtime_error("Lua gave a value of a kind that is not compared");
}

}  // namespace

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

LuaState::LuaState() : state_(lua_newstate(&allocate, nullptr)) {
  if (!state_) throw std::bad_alloc();
  luaL_openlibs(state_.get());
}

void LuaState::load(const std::string& chunk) {
  check(luaL_loadbufferx(get(), chunk.data(), chunk.size(), "=chunk", "t"));
}

void LuaState::loadFile(const std::filesystem::path& file) {
  check(luaL_loadfilex(get(), file.c_str(), "t"));
}

void LuaState::call(int arguments) { check(lua_pcall(get(), arguments, 1, 0)); }

Datum LuaState::popDatum() {
  Datum datum = datumAt(get(), lua_gettop(get()));
  lua_pop(get(), 1);
  return datum;
}

void LuaState::check(int status) const {
  if (status != LUA_OK) throw std::runtime_error(lua_tostring(get(), -1));
}

}  // namespace commandfilter::benchmarks
