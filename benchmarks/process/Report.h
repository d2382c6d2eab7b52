#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Limits.h"
#include "LoadedObjects.h"
#include "Summary.h"

namespace commandfilter::benchmarks {

struct Table {
  std::string title;
  std::string base;
  std::size_t rounds = 0;
  std::vector<Summary> rows;
};

struct LoadRow {
  std::string name;
  std::optional<LoadedObjects> loaded;
};

struct Report {
  long launcherKib = 0;
  std::optional<Table> programs;
  std::optional<Table> scaling;
  std::vector<Growth> growth;
  std::optional<Table> devices;
  std::optional<Table> bundles;
  std::optional<Table> templates;
  std::vector<LoadRow> loads;
  std::vector<LimitCheck> limits;
  std::vector<std::string> notes;
};

void print(const Report& report);
void writeJson(const Report& report, const std::filesystem::path& file);

}  // namespace commandfilter::benchmarks
