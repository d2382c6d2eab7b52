#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "Cases.h"
#include "EngineHost.h"
#include "LuaHost.h"
#include "Supplies.h"

namespace commandfilter::benchmarks {

namespace {

constexpr std::size_t kCount = 1000;

// Lua folds the list in a loop, whose body is the step.
std::string loop(const std::string& start, const std::string& step) {
  return "local device = ... return function() local list, result = device.List, " + start +
         " for i = 1, #list do local element = list[i] " + step + " end return result end";
}

std::vector<std::int64_t> levels() {
  std::vector<std::int64_t> numbers;
  for (const Supply& supply : makeSupplies(kCount)) numbers.push_back(supply.level);
  return numbers;
}

Datum deviceWith(Datum::List list) { return Datum::Map{{"List", std::move(list)}}; }
Datum deviceWith(const std::vector<std::int64_t>& numbers) {
  return deviceWith(Datum::List(numbers.begin(), numbers.end()));
}

Contenders concatenation() {
  std::vector<std::string> names;
  for (const Supply& supply : makeSupplies(kCount)) names.push_back(supply.name);
  const Datum device = deviceWith(Datum::List(names.begin(), names.end()));
  return {engineEvaluation({device}, "_Aggregate({List}, @initial + @element, \"\")"),
          luaEvaluation(device, loop("\"\"", "result = result .. element")),
          plainContender([names] {
            std::string text;
            for (const std::string& name : names) text.append(name);
            return text;
          })};
}

Contenders bitOr() {
  const std::vector<std::int64_t> numbers = levels();
  const Datum device = deviceWith(numbers);
  return {engineEvaluation({device}, "_Aggregate({List}, @initial bitor @element, 0)"),
          luaEvaluation(device, loop("0", "result = result | element")), plainContender([numbers] {
            std::int64_t bits = 0;
            for (const std::int64_t number : numbers) bits |= number;
            return bits;
          })};
}

Contenders maximum() {
  const std::vector<std::int64_t> numbers = levels();
  const Datum device = deviceWith(numbers);
  return {engineEvaluation(
              {device}, "_Aggregate({List}, @element gt @initial then @element else @initial, 0)"),
          luaEvaluation(device, loop("0", "if element > result then result = element end")),
          plainContender([numbers] { return *std::ranges::max_element(numbers); })};
}

}  // namespace

std::vector<Case> aggregateCases() {
  return {
      {"aggregate 1,000: concatenation", 0.10, [] { return concatenation(); }},
      {"aggregate 1,000: bit-or", 3.0, [] { return bitOr(); }},
      {"aggregate 1,000: maximum", 4.5, [] { return maximum(); }},
  };
}

}  // namespace commandfilter::benchmarks
