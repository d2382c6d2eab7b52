#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Cases.h"
#include "EngineHost.h"
#include "LuaHost.h"
#include "Supplies.h"

namespace commandfilter::benchmarks {

namespace {

using Texts = std::vector<std::pair<std::int64_t, std::string>>;

Datum toDatum(const Texts& texts) {
  Datum::Map map;
  for (const auto& [code, text] : texts) map.emplace_back(code, text);
  return map;
}

// The texts of the bits that are set, in the table's order: Lua keeps that in lists of their own.
Contenders translateMask() {
  constexpr int kBits = 16;
  constexpr std::int64_t kMask = 0x2955;
  Texts texts;
  Datum::List codes;
  Datum::List codeTexts;
  for (int bit = 0; bit < kBits; ++bit) {
    texts.emplace_back(std::int64_t{1} << bit, "Condition " + std::to_string(bit));
    codes.emplace_back(texts.back().first);
    codeTexts.emplace_back(texts.back().second);
  }
  const Datum device = Datum::Map{
      {"Mask", kMask}, {"Table", toDatum(texts)}, {"Codes", codes}, {"Texts", codeTexts}};
  return {engineEvaluation({device}, "_Translate({Mask}, {Table})"), luaEvaluation(device, R"(
            local device = ...
            local codes, texts = device.Codes, device.Texts
            return function()
              local mask, result, count = device.Mask, {}, 0
              for i = 1, #codes do
                local code = codes[i]
                if mask & code == code then
                  count = count + 1
                  result[count] = texts[i]
                end
              end
              return result
            end)"),
          plainContender(
              [texts] {
                std::vector<std::string> result;
                for (const auto& [code, text] : texts) {
                  if ((kMask & code) == code) result.push_back(text);
                }
                return result;
              },
              [](const std::vector<std::string>& result) { return benchmarks::toDatum(result); })};
}

// The texts of a list of codes, of which some have none.
Contenders translateCodes(std::size_t count) {
  constexpr std::int64_t kCodes = 64;
  Texts texts;
  for (std::int64_t code = 0; code < kCodes; ++code) {
    texts.emplace_back(1000 + code, "Alert " + std::to_string(code));
  }
  std::vector<std::int64_t> codes;
  for (const Supply& supply : makeSupplies(count)) codes.push_back(1000 + supply.level % 80);
  const Datum device =
      Datum::Map{{"Codes", Datum::List(codes.begin(), codes.end())}, {"Table", toDatum(texts)}};
  return {engineEvaluation({device}, "_Translate({Codes}, {Table})"), luaEvaluation(device, R"(
            local device = ...
            local texts = device.Table
            return function()
              local codes, result, count = device.Codes, {}, 0
              for i = 1, #codes do
                local text = texts[codes[i]]
                if text ~= nil then
                  count = count + 1
                  result[count] = text
                end
              end
              return result
            end)"),
          plainContender(
              [codes,
               table = std::unordered_map<std::int64_t, std::string>(texts.begin(), texts.end())] {
                std::vector<std::string> result;
                for (const std::int64_t code : codes) {
                  const auto found = table.find(code);
                  if (found != table.end()) result.push_back(found->second);
                }
                return result;
              },
              [](const std::vector<std::string>& result) { return benchmarks::toDatum(result); })};
}

}  // namespace

std::vector<Case> translateCases() {
  return {
      {"translate a mask", 0.25, [] { return translateMask(); }},
      {"translate 1,000 codes", 0.35, [] { return translateCodes(1000); }},
  };
}

}  // namespace commandfilter::benchmarks
