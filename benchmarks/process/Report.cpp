#include "Report.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "harness/ScratchFolder.h"

namespace commandfilter::benchmarks {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kNameWidth = 34;

void print(const Table& table) {
  std::printf("\n%s (%zu rounds, interleaved; \"x\" = times %s)\n", table.title.c_str(),
              table.rounds, table.base.c_str());
  std::printf("%-*s %9s %19s %6s %9s %6s %10s %6s %14s %6s\n", kNameWidth, "program", "wall ms",
              "quartiles", "x", "CPU ms", "x", "peak KiB", "x", "instructions", "x");
  for (const Summary& row : table.rows) {
    std::printf("%-*s %9.3f %9.3f-%9.3f %6.2f %9.3f %6.2f %10ld %6.2f", kNameWidth,
                row.name.c_str(), row.wallMs.median, row.wallMs.first, row.wallMs.third,
                row.wallRatio.median, row.cpuMs, row.cpuRatio, row.peakKib, row.memoryRatio);
    if (row.instructions) {
      std::printf(" %14llu", static_cast<unsigned long long>(*row.instructions));
    } else {
      std::printf(" %14s", "-");
    }
    if (row.instructionRatio) {
      std::printf(" %6.2f\n", *row.instructionRatio);
    } else {
      std::printf(" %6s\n", "-");
    }
  }
}

std::string text(const std::optional<double>& value) {
  if (!value) return "-";
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.2f", *value);
  return buffer;
}

void print(const std::vector<Growth>& growth) {
  std::printf("\n%10s %14s %14s %28s\n", "lines", "wall us/line", "bytes/line",
              "exponent wall, instructions");
  for (const Growth& step : growth) {
    std::printf("%10ld %14.3f %14.0f %20s, %s\n", step.to, step.wallUsPerLine, step.bytesPerLine,
                text(step.wallExponent).c_str(), text(step.instructionExponent).c_str());
  }
}

void print(const std::vector<LoadRow>& loads) {
  std::printf("\n%-*s %16s %16s\n", kNameWidth, "shared objects loaded", "in all", "plug-ins");
  for (const LoadRow& row : loads) {
    if (row.loaded) {
      std::printf("%-*s %16zu %16zu\n", kNameWidth, row.name.c_str(), row.loaded->all,
                  row.loaded->inFolder);
    } else {
      std::printf("%-*s %16s %16s\n", kNameWidth, row.name.c_str(), "-", "-");
    }
  }
}

const char* verdict(const LimitCheck& check) {
  if (!check.value) return check.binding ? "NOT MEASURED" : "not measured";
  if (!check.exceeded()) return "reached";
  return check.binding ? "EXCEEDED" : "exceeded (a statement only)";
}

void print(const std::vector<LimitCheck>& limits) {
  std::printf("\n%-*s %-24s %8s %8s\n", kNameWidth, "limits", "measure", "value", "limit");
  for (const LimitCheck& check : limits) {
    std::printf("%-*s %-24s %8s %8.2f  %s\n", kNameWidth, check.subject.c_str(),
                check.measure.c_str(), text(check.value).c_str(), check.limit, verdict(check));
  }
}

template <typename T>
Json json(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json json(const Quartiles& value) {
  return {{"first", value.first}, {"median", value.median}, {"third", value.third}};
}

Json json(const Table& table) {
  Json rows = Json::array();
  for (const Summary& row : table.rows) {
    rows.push_back({{"name", row.name},
                    {"ours", row.ours},
                    {"wallMs", json(row.wallMs)},
                    {"cpuMs", row.cpuMs},
                    {"peakKib", row.peakKib},
                    {"instructions", json(row.instructions)},
                    {"ratios",
                     {{"wall", json(row.wallRatio)},
                      {"cpu", row.cpuRatio},
                      {"memory", row.memoryRatio},
                      {"instructions", json(row.instructionRatio)}}}});
  }
  return {{"title", table.title}, {"base", table.base}, {"rounds", table.rounds}, {"rows", rows}};
}

Json json(const std::vector<Growth>& growth) {
  Json result = Json::array();
  for (const Growth& step : growth) {
    result.push_back({{"from", step.from},
                      {"to", step.to},
                      {"wallUsPerLine", step.wallUsPerLine},
                      {"bytesPerLine", step.bytesPerLine},
                      {"wallExponent", json(step.wallExponent)},
                      {"instructionExponent", json(step.instructionExponent)}});
  }
  return result;
}

Json json(const std::vector<LoadRow>& loads) {
  Json result = Json::array();
  for (const LoadRow& row : loads) {
    Json entry = {{"name", row.name}, {"all", nullptr}, {"plugIns", nullptr}};
    if (row.loaded) {
      entry["all"] = row.loaded->all;
      entry["plugIns"] = row.loaded->inFolder;
    }
    result.push_back(entry);
  }
  return result;
}

Json json(const std::vector<LimitCheck>& limits) {
  Json result = Json::array();
  for (const LimitCheck& check : limits) {
    result.push_back({{"subject", check.subject},
                      {"measure", check.measure},
                      {"value", json(check.value)},
                      {"limit", check.limit},
                      {"binding", check.binding},
                      {"exceeded", check.exceeded()}});
  }
  return result;
}

}  // namespace

void print(const Report& report) {
  if (report.programs) print(*report.programs);
  if (report.devices) print(*report.devices);
  if (report.scaling) print(*report.scaling);
  if (!report.growth.empty()) print(report.growth);
  if (report.bundles) print(*report.bundles);
  if (!report.loads.empty()) print(report.loads);
  if (report.templates) print(*report.templates);
  if (!report.limits.empty()) print(report.limits);
  std::printf("\nPeak memory cannot read lower than the launcher's own, %ld KiB.\n",
              report.launcherKib);
  for (const std::string& note : report.notes) std::printf("Note: %s.\n", note.c_str());
}

void writeJson(const Report& report, const std::filesystem::path& file) {
  Json result;
  result["launcherKib"] = report.launcherKib;
  if (report.programs) result["programs"] = json(*report.programs);
  if (report.devices) result["devices"] = json(*report.devices);
  if (report.scaling) {
    result["scaling"] = json(*report.scaling);
    result["scaling"]["growth"] = json(report.growth);
  }
  if (report.bundles) {
    result["bundles"] = json(*report.bundles);
    result["bundles"]["loads"] = json(report.loads);
  }
  if (report.templates) result["templates"] = json(*report.templates);
  result["limits"] = json(report.limits);
  result["notes"] = report.notes;
  writeFile(file, result.dump(2) + "\n");
}

}  // namespace commandfilter::benchmarks
