#include <string>

#include "Cases.h"
#include "EngineHost.h"
#include "LuaHost.h"

namespace commandfilter::benchmarks {

namespace {

// Each macro hands its argument on and adds to what it gets back; the last makes a text of it.
constexpr int kDeepest = 5;

std::string wrapped(const std::string& text, int depth) {
  if (depth == kDeepest) return "<" + text + ">";
  return wrapped(text, depth + 1) + ".";
}

Contenders macroCall(int depth) {
  const Datum device = Datum::Map{{"Name", "LaserWriter"}};
  const Datum macros = Datum::Map{
      {"M1", "_M2(@arg0) + \".\""}, {"M2", "_M3(@arg0) + \".\""},    {"M3", "_M4(@arg0) + \".\""},
      {"M4", "_M5(@arg0) + \".\""}, {"M5", "\"<\" + @arg0 + \">\""},
  };
  const std::string name = std::string("M") + std::to_string(kDeepest + 1 - depth);
  return {engineEvaluation({device, macros}, "_" + name + "({Name})"), luaEvaluation(device, R"(
            local device = ...
            local function M5(arg0) return "<" .. arg0 .. ">" end
            local function M4(arg0) return M5(arg0) .. "." end
            local function M3(arg0) return M4(arg0) .. "." end
            local function M2(arg0) return M3(arg0) .. "." end
            local function M1(arg0) return M2(arg0) .. "." end
            return function() return )" + name + "(device.Name) end"),
          plainContender([text = std::string("LaserWriter"), depth] {
            return wrapped(text, kDeepest + 1 - depth);
          })};
}

}  // namespace

std::vector<Case> macroCases() {
  return {
      {"macro call, depth 1", 2.0, [] { return macroCall(1); }},
      {"macro calls, depth 5", 2.2, [] { return macroCall(kDeepest); }},
  };
}

}  // namespace commandfilter::benchmarks
