#include "comparison/ComparisonReport.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

namespace commandfilter::benchmarks {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kNameWidth = 40;

const char* text(Verdict verdict) {
  switch (verdict) {
    case Verdict::Informs:
      return "-";
    case Verdict::Reached:
      return "reached";
    case Verdict::WithinNoise:
      return "missed, within noise";
    case Verdict::Missed:
      return "MISSED";
  }
  return "";
}

Json json(const Cost& cost) {
  return {{"nanoseconds", cost.nanoseconds}, {"allocations", cost.allocations}};
}

Json json(const Quartiles& value) {
  return {{"first", value.first}, {"median", value.median}, {"third", value.third}};
}

template <typename T>
Json json(const std::optional<T>& value) {
  return value ? json(*value) : Json(nullptr);
}

std::string text(const std::optional<double>& value, int precision) {
  if (!value) return "-";
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.*f", precision, *value);
  return buffer;
}

Json json(const Row& row) {
  return {{"name", row.name},
          {"ours", json(row.ours)},
          {"lua", json(row.lua)},
          {"cpp", json(row.plain)},
          {"ratioToLua", json(row.ratioToLua)},
          {"ratioToCpp", json(row.ratioToPlain)},
          {"limit", row.limit ? Json(*row.limit) : Json(nullptr)},
          {"verdict", text(row.verdict())}};
}

}  // namespace

void printHeader() {
  std::printf("%-*s %38s %30s %24s %8s %6s  %s\n", kNameWidth, "", "nanoseconds an operation",
              "allocations an operation", "ours / Lua", "ours /", "at", "");
  std::printf("%-*s %12s %12s %12s %10s %9s %9s %8s %15s %8s %6s  %s\n", kNameWidth, "work", "ours",
              "Lua 5.4", "C++", "ours", "Lua", "C++", "median", "quartiles", "C++", "most",
              "verdict");
}

void print(const Row& row) {
  std::optional<double> plainTime;
  std::optional<double> plainAllocations;
  std::optional<double> ratioToPlain;
  if (row.plain) plainTime = row.plain->nanoseconds;
  if (row.plain) plainAllocations = row.plain->allocations;
  if (row.ratioToPlain) ratioToPlain = row.ratioToPlain->median;
  std::printf("%-*s %12.1f %12.1f %12s %10.1f %9.1f %9s %8.3f %7.3f-%7.3f %8s %6s  ", kNameWidth,
              row.name.c_str(), row.ours.nanoseconds, row.lua.nanoseconds,
              text(plainTime, 1).c_str(), row.ours.allocations, row.lua.allocations,
              text(plainAllocations, 1).c_str(), row.ratioToLua.median, row.ratioToLua.first,
              row.ratioToLua.third, text(ratioToPlain, 2).c_str(), text(row.limit, 2).c_str());
  std::printf("%s\n", text(row.verdict()));
  std::fflush(stdout);
}

void writeJson(const std::vector<Row>& rows, const std::filesystem::path& file) {
  Json list = Json::array();
  for (const Row& row : rows) list.push_back(json(row));
  std::ofstream stream(file);
  stream << Json{{"rows", list}}.dump(2) << '\n';
  stream.close();
  if (!stream) throw std::runtime_error("cannot write " + file.string());
}

}  // namespace commandfilter::benchmarks
