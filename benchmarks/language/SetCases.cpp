#include <algorithm>
#include <string>
#include <vector>

#include "Cases.h"
#include "EngineHost.h"
#include "LuaHost.h"
#include "Supplies.h"

namespace commandfilter::benchmarks {

namespace {

using Names = std::vector<std::string>;

// Two lists of this many names; half of the second stands in the first as well.
constexpr std::size_t kCount = 100;

struct Lists {
  Names first;
  Names second;
};

Lists lists() {
  Lists result;
  const std::vector<Supply> supplies = makeSupplies(kCount + kCount / 2);
  for (std::size_t i = 0; i < supplies.size(); ++i) {
    if (i < kCount) result.first.push_back(supplies[i].name);
    if (i >= kCount / 2) result.second.push_back(supplies[i].name);
  }
  return result;
}

bool contains(const Names& names, const std::string& name) {
  return std::ranges::find(names, name) != names.end();
}

// Appends the names that `wanted` accepts, each at most once.
template <typename Wanted>
void appendOnce(Names& result, const Names& names, Wanted wanted) {
  for (const std::string& name : names) {
    if (wanted(name) && !contains(result, name)) result.push_back(name);
  }
}

Names unite(const Names& first, const Names& second) {
  const auto all = [](const std::string&) { return true; };
  Names result;
  appendOnce(result, first, all);
  appendOnce(result, second, all);
  return result;
}

Names intersect(const Names& first, const Names& second) {
  Names result;
  appendOnce(result, second, [&first](const std::string& name) { return contains(first, name); });
  return result;
}

Names exclude(const Names& first, const Names& second) {
  Names result;
  appendOnce(result, first, [&second](const std::string& name) { return !contains(second, name); });
  return result;
}

// Membership is tested along the list, in Lua and C++ too: so the operations are stated.
constexpr char kLinear[] = R"(
    local device = ...
    local function contains(list, value)
      for i = 1, #list do
        if list[i] == value then return true end
      end
      return false
    end
    local operations = {}
    function operations.Union(first, second)
      local result = {}
      for i = 1, #first do
        local value = first[i]
        if not contains(result, value) then result[#result + 1] = value end
      end
      for i = 1, #second do
        local value = second[i]
        if not contains(result, value) then result[#result + 1] = value end
      end
      return result
    end
    function operations.Intersect(first, second)
      local result = {}
      for i = 1, #second do
        local value = second[i]
        if contains(first, value) and not contains(result, value) then
          result[#result + 1] = value
        end
      end
      return result
    end
    function operations.Exclude(first, second)
      local result = {}
      for i = 1, #first do
        local value = first[i]
        if not contains(second, value) and not contains(result, value) then
          result[#result + 1] = value
        end
      end
      return result
    end
)";

// How Lua would do it when nothing is stated: with a table as a set.
constexpr char kHashed[] = R"(
    local device = ...
    local operations = {}
    function operations.Union(first, second)
      local result, seen, count = {}, {}, 0
      for i = 1, #first do
        local value = first[i]
        if not seen[value] then
          seen[value] = true
          count = count + 1
          result[count] = value
        end
      end
      for i = 1, #second do
        local value = second[i]
        if not seen[value] then
          seen[value] = true
          count = count + 1
          result[count] = value
        end
      end
      return result
    end
)";

Contenders operation(const std::string& name, const std::string& lua,
                     Names (*plain)(const Names&, const Names&)) {
  const Lists names = lists();
  const Datum device =
      Datum::Map{{"First", toDatum(names.first)}, {"Second", toDatum(names.second)}};
  return {engineEvaluation({device}, "_" + name + "({First}, {Second})"),
          luaEvaluation(device, lua + "local operation = operations." + name +
                                    " return function() return operation(device.First, "
                                    "device.Second) end"),
          plainContender([names, plain] { return plain(names.first, names.second); },
                         [](const Names& result) { return toDatum(result); })};
}

}  // namespace

std::vector<Case> setCases() {
  return {
      {"union of 100 strings", 0.15, [] { return operation("Union", kLinear, unite); }},
      {"union of 100 strings, Lua's with a hash", std::nullopt,
       [] { return operation("Union", kHashed, unite); }},
      {"intersection of 100 strings", std::nullopt,
       [] { return operation("Intersect", kLinear, intersect); }},
      {"difference of 100 strings", std::nullopt,
       [] { return operation("Exclude", kLinear, exclude); }},
  };
}

}  // namespace commandfilter::benchmarks
