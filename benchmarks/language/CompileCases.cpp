#include "Cases.h"
#include "EngineHost.h"
#include "LuaHost.h"
#include "PlainExpression.h"
#include "StatusExpressions.h"

namespace commandfilter::benchmarks {

namespace {

// Compiling is measured; what has been compiled is evaluated to be compared.
Contenders compilation(const StatusExpression& expression) {
  const Datum device = statusDevice();
  return {
      engineCompilation({device}, expression.ours),
      luaCompilation(device, "return " + expression.lua),
      plainContender([text = expression.ours] { return PlainExpression(text); },
                     [device](const PlainExpression& plain) { return plain.evaluate(device); })};
}

}  // namespace

std::vector<Case> compileCases() {
  return {
      {"compile 81 characters", 0.25, [] { return compilation(shortExpression()); }},
      {"compile 207 characters", 0.25, [] { return compilation(longExpression()); }},
      {"compile 10,000 characters", 0.30, [] { return compilation(veryLongExpression()); }},
  };
}

}  // namespace commandfilter::benchmarks
