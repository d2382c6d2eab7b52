#include "Report.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

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
  std::printf("%-*s %12.1f %12.1f %12.1f %10.1f %9.1f %9.1f %8.3f %7.3f-%7.3f %8.2f ", kNameWidth,
              row.name.c_str(), row.ours.nanoseconds, row.lua.nanoseconds, row.plain.nanoseconds,
              row.ours.allocations, row.lua.allocations, row.plain.allocations,
              row.ratioToLua.median, row.ratioToLua.first, row.ratioToLua.third,
              row.ratioToPlain.median);
  if (row.limit) {
    std::printf("%6.2f  ", *row.limit);
  } else {
    std::printf("%6s  ", "-");
  }
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
