#include <string>
#include <vector>

#include "Cases.h"
#include "EngineHost.h"
#include "LuaHost.h"
#include "Supplies.h"

namespace commandfilter::benchmarks {

namespace {

// The names of the supplies whose level is low: a quarter of all.
Contenders filterAndMap(std::size_t count) {
  const std::vector<Supply> supplies = makeSupplies(count);
  const Datum device = Datum::Map{{"Supplies", toDatum(supplies)}};
  const auto low = static_cast<std::int64_t>(count / 4);
  const std::string limit = std::to_string(low);
  const std::string expression = "_Aggregate(_Filter({Supplies}, @element _GetItem \"Level\" lt " +
                                 limit + "), @initial + (@element _GetItem \"Name\"), _Array())";
  // The condition and the step are functions, as the engine takes any expression there.
  const std::string chunk = R"(
    local device = ...
    local function filter(list, condition)
      local result, count = {}, 0
      for i = 1, #list do
        local element = list[i]
        if condition(element) then
          count = count + 1
          result[count] = element
        end
      end
      return result
    end
    local function map(list, step)
      local result = {}
      for i = 1, #list do
        result[i] = step(list[i])
      end
      return result
    end
    local function isLow(supply) return supply.Level < )" +
                            limit + R"( end
    local function nameOf(supply) return supply.Name end
    return function() return map(filter(device.Supplies, isLow), nameOf) end)";
  const auto plain = [supplies, low] {
    std::vector<std::string> names;
    for (const Supply& supply : supplies) {
      if (supply.level < low) names.push_back(supply.name);
    }
    return names;
  };
  return {
      engineEvaluation({device}, expression), luaEvaluation(device, chunk),
      plainContender(plain, [](const std::vector<std::string>& names) { return toDatum(names); })};
}

}  // namespace

std::vector<Case> supplyCases() {
  return {
      {"filter and map 8 supplies", 0.90, [] { return filterAndMap(8); }},
      {"filter and map 1,000 supplies", 1.0, [] { return filterAndMap(1000); }},
  };
}

}  // namespace commandfilter::benchmarks
