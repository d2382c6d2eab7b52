#include "LuaTemplate.h"

#include <utility>

#include "comparison/LuaState.h"

namespace commandfilter::benchmarks {

namespace {

// A Lua interpreter with the template engine, if there is one.
class Host {
 public:
  explicit Host(LuaFiles files) : files_(std::move(files)) {
    if (files_.engine.empty()) return;
    lua_.load(files_.engine);
    lua_.call(0);
    engine_ = luaL_ref(lua_.get(), LUA_REGISTRYINDEX);
  }

  lua_State* lua() const { return lua_.get(); }

  // Leaves the function that computes all values.
  void loadProgram() {
    if (engine_ != LUA_NOREF) {
      lua_rawgeti(lua_.get(), LUA_REGISTRYINDEX, engine_);
      loadDevice();
      lua_.loadFile(files_.configuration);
      lua_.call(2);
    } else {
      lua_.loadFile(files_.configuration);
      loadDevice();
      lua_.call(1);
    }
  }
  // Calls the function on the stack.
  void compute() { lua_.call(0); }
  Datum popDatum() { return lua_.popDatum(); }

 private:
  void loadDevice() {
    lua_.loadFile(files_.device);
    lua_.call(0);
  }

  LuaState lua_;
  LuaFiles files_;
  int engine_ = LUA_NOREF;
};

class Cold final : public Contender {
 public:
  explicit Cold(LuaFiles files) : host_(std::move(files)) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      host_.loadProgram();
      host_.compute();
      lua_pop(host_.lua(), 1);
    }
  }
  Datum result() override {
    host_.loadProgram();
    host_.compute();
    return host_.popDatum();
  }

 private:
  Host host_;
};

class Reading final : public Contender {
 public:
  explicit Reading(LuaFiles files) : host_(std::move(files)) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      host_.loadProgram();
      lua_pop(host_.lua(), 1);
    }
  }
  Datum result() override {
    run(1);
    return 2;
  }

 private:
  Host host_;
};

class Warm final : public Contender {
 public:
  explicit Warm(LuaFiles files) : host_(std::move(files)) {
    host_.loadProgram();
    function_ = luaL_ref(host_.lua(), LUA_REGISTRYINDEX);
  }

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      compute();
      lua_pop(host_.lua(), 1);
    }
  }
  Datum result() override {
    compute();
    return host_.popDatum();
  }

 private:
  void compute() {
    lua_rawgeti(host_.lua(), LUA_REGISTRYINDEX, function_);
    host_.compute();
  }

  Host host_;
  int function_ = LUA_NOREF;
};

class Compilation final : public Contender {
 public:
  Compilation(std::vector<std::string> chunks, std::int64_t result)
      : chunks_(std::move(chunks)), result_(result) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) compileAll();
  }
  Datum result() override {
    compileAll();
    return result_;
  }

 private:
  // All stay until the last is compiled.
  void compileAll() {
    luaL_checkstack(lua_.get(), static_cast<int>(chunks_.size()), nullptr);
    for (const std::string& chunk : chunks_) lua_.load(chunk);
    lua_settop(lua_.get(), 0);
  }

  LuaState lua_;
  std::vector<std::string> chunks_;
  std::int64_t result_;
};

}  // namespace

std::unique_ptr<Contender> luaCold(const LuaFiles& files) { return std::make_unique<Cold>(files); }

std::unique_ptr<Contender> luaReading(const LuaFiles& files) {
  return std::make_unique<Reading>(files);
}

std::unique_ptr<Contender> luaWarm(const LuaFiles& files) { return std::make_unique<Warm>(files); }

std::unique_ptr<Contender> luaCompilationOf(std::vector<std::string> chunks, std::int64_t result) {
  return std::make_unique<Compilation>(std::move(chunks), result);
}

}  // namespace commandfilter::benchmarks
