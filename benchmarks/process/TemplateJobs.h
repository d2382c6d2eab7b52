#pragma once

#include <filesystem>
#include <vector>

#include "Launcher.h"

namespace commandfilter::benchmarks {

// One value of a template, and the same from the same facts by a Lua program and by jq.
struct TemplateJobs {
  std::filesystem::path admtemplate;
  std::filesystem::path lua;
  std::filesystem::path jq;
  std::filesystem::path scratch;

  // Lua comes first, then jq, then admtemplate. All print the same line.
  std::vector<Program> programs() const;
};

// Throws unless all programs print the same.
void requireSameOutput(const Launcher& launcher, const std::vector<Program>& programs,
                       const std::filesystem::path& scratch);

}  // namespace commandfilter::benchmarks
