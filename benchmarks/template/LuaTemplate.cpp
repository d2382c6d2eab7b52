#include "LuaTemplate.h"

#include <utility>

#include "comparison/LuaState.h"

namespace commandfilter::benchmarks {

namespace {

// Leaves the function that computes all values.
void loadProgram(LuaState& lua, const LuaFiles& files) {
  lua.loadFile(files.configuration);
  lua.loadFile(files.device);
  lua.call(0);
  lua.call(1);
}

class Cold final : public Contender {
 public:
  explicit Cold(LuaFiles files) : files_(std::move(files)) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      compute();
      lua_pop(lua_.get(), 1);
    }
  }
  Datum result() override {
    compute();
    return lua_.popDatum();
  }

 private:
  void compute() {
    loadProgram(lua_, files_);
    lua_.call(0);
  }

  LuaState lua_;
  LuaFiles files_;
};

class Reading final : public Contender {
 public:
  explicit Reading(LuaFiles files) : files_(std::move(files)) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      loadProgram(lua_, files_);
      lua_pop(lua_.get(), 1);
    }
  }
  Datum result() override {
    run(1);
    return 2;
  }

 private:
  LuaState lua_;
  LuaFiles files_;
};

class Warm final : public Contender {
 public:
  explicit Warm(const LuaFiles& files) {
    loadProgram(lua_, files);
    function_ = luaL_ref(lua_.get(), LUA_REGISTRYINDEX);
  }

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      compute();
      lua_pop(lua_.get(), 1);
    }
  }
  Datum result() override {
    compute();
    return lua_.popDatum();
  }

 private:
  void compute() {
    lua_rawgeti(lua_.get(), LUA_REGISTRYINDEX, function_);
    lua_.call(0);
  }

  LuaState lua_;
  int function_ = LUA_NOREF;
};

class Compilation final : public Contender {
 public:
  Compilation(std::string program, std::int64_t expressions)
      : program_(std::move(program)), expressions_(expressions) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      lua_.load(program_);
      lua_pop(lua_.get(), 1);
    }
  }
  Datum result() override {
    run(1);
    return expressions_;
  }

 private:
  LuaState lua_;
  std::string program_;
  std::int64_t expressions_;
};

}  // namespace

std::unique_ptr<Contender> luaCold(const LuaFiles& files) { return std::make_unique<Cold>(files); }

std::unique_ptr<Contender> luaReading(const LuaFiles& files) {
  return std::make_unique<Reading>(files);
}

std::unique_ptr<Contender> luaWarm(const LuaFiles& files) { return std::make_unique<Warm>(files); }

std::unique_ptr<Contender> luaCompilationOf(const std::string& program, std::int64_t expressions) {
  return std::make_unique<Compilation>(program, expressions);
}

}  // namespace commandfilter::benchmarks
