#include <algorithm>
#include <string>
#include <vector>

#include "Cases.h"
#include "EngineHost.h"
#include "LuaHost.h"
#include "Supplies.h"

namespace commandfilter::benchmarks {

namespace {

// The supplies in the order of a property. What is given is their order, not copies of them.
template <typename Property>
Contenders sort(std::size_t count, const std::string& name, Property property) {
  const std::vector<Supply> supplies = makeSupplies(count);
  const Datum device = Datum::Map{{"Supplies", toDatum(supplies)}};
  const std::string chunk = R"(
    local device = ...
    local move, sort = table.move, table.sort
    local function before(left, right) return left.)" +
                            name + " < right." + name + R"( end
    return function()
      local supplies = device.Supplies
      local sorted = move(supplies, 1, #supplies, 1, {})
      sort(sorted, before)
      return sorted
    end)";
  const auto plain = [supplies, property] {
    std::vector<const Supply*> sorted;
    sorted.reserve(supplies.size());
    for (const Supply& supply : supplies) sorted.push_back(&supply);
    std::ranges::sort(
        sorted, {}, [property](const Supply* supply) -> const auto& { return supply->*property; });
    return sorted;
  };
  return {engineEvaluation({device}, "_Sort({Supplies}, @element _GetItem \"" + name + "\")"),
          luaEvaluation(device, chunk),
          plainContender(plain,
                         [](const std::vector<const Supply*>& sorted) { return toDatum(sorted); })};
}

Contenders byNumber(std::size_t count) { return sort(count, "Level", &Supply::level); }

Contenders byString(std::size_t count) { return sort(count, "Name", &Supply::name); }

}  // namespace

std::vector<Case> sortCases() {
  return {
      {"sort 10 by number", 0.20, [] { return byNumber(10); }},
      {"sort 1,000 by number", 0.12, [] { return byNumber(1000); }},
      {"sort 100,000 by number", 0.25, [] { return byNumber(100000); }},
      {"sort 10 by string", 0.25, [] { return byString(10); }},
      {"sort 1,000 by string", 0.18, [] { return byString(1000); }},
      {"sort 100,000 by string", 0.30, [] { return byString(100000); }},
  };
}

}  // namespace commandfilter::benchmarks
