#pragma once

#include <filesystem>
#include <vector>

#include "comparison/Measurement.h"

namespace commandfilter::benchmarks {

void printHeader();
void print(const Row& row);
void writeJson(const std::vector<Row>& rows, const std::filesystem::path& file);

}  // namespace commandfilter::benchmarks
