#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "comparison/Contender.h"

namespace commandfilter::benchmarks {

// Where a template and the device that it is about are described.
struct TemplateFiles {
  std::filesystem::path configuration;
  std::filesystem::path device;
};

// Reads both files, opens the device and computes all values.
std::unique_ptr<Contender> engineCold(const TemplateFiles& files);

// Reads both files. The result is how many there are.
std::unique_ptr<Contender> engineReading(const TemplateFiles& files);

// Starts a new session and computes all values again; with `reinitializes`, what the device has
// answered is forgotten as well.
std::unique_ptr<Contender> engineWarm(const TemplateFiles& files, bool reinitializes);

// Compiles each of the expressions. The result is their number.
std::unique_ptr<Contender> engineCompilationOf(const std::vector<std::string>& expressions);

}  // namespace commandfilter::benchmarks
