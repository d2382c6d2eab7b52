#include "LuaHost.h"

#include <utility>

#include "comparison/LuaState.h"

namespace commandfilter::benchmarks {

namespace {

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
