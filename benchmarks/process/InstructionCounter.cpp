#include "InstructionCounter.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "harness/ScratchFolder.h"

namespace commandfilter::benchmarks {

namespace {

constexpr int kTimeoutSeconds = 900;

std::uint64_t total(const std::string& output) {
  std::istringstream lines(output);
  std::string line;
  while (std::getline(lines, line)) {
    std::istringstream words(line);
    std::string key;
    std::uint64_t value = 0;
    if (words >> key && key == "totals:" && words >> value && value > 0) return value;
  }
  throw std::runtime_error("no total in the output of callgrind");
}

}  // namespace

InstructionCounter::InstructionCounter(std::filesystem::path valgrind,
                                       const std::filesystem::path& scratch)
    : valgrind_(std::move(valgrind)), output_(scratch / "callgrind.out") {}

std::optional<InstructionCounter> InstructionCounter::find(const std::filesystem::path& scratch) {
  const char* folders = std::getenv("PATH");
  std::istringstream stream(folders == nullptr ? "/usr/local/bin:/usr/bin:/bin" : folders);
  std::string folder;
  while (std::getline(stream, folder, ':')) {
    const std::filesystem::path candidate = std::filesystem::path(folder) / "valgrind";
    if (access(candidate.c_str(), X_OK) == 0) return InstructionCounter(candidate, scratch);
  }
  return std::nullopt;
}

std::uint64_t InstructionCounter::count(const Launcher& launcher, const Program& program,
                                        int runs) const {
  Program wrapped = program;
  wrapped.path = valgrind_;
  wrapped.arguments = {valgrind_, "-q", "--tool=callgrind",
                       "--callgrind-out-file=" + output_.string(), program.path};
  if (!program.arguments.empty()) {
    wrapped.arguments.insert(wrapped.arguments.end(), program.arguments.begin() + 1,
                             program.arguments.end());
  }
  Launcher::Surroundings surroundings;
  surroundings.timeoutSeconds = kTimeoutSeconds;
  std::vector<std::uint64_t> counts;
  for (int i = 0; i < runs; ++i) {
    std::filesystem::remove(output_);
    launcher.run(wrapped, surroundings);
    counts.push_back(total(readFile(output_)));
  }
  const auto middle = counts.begin() + runs / 2;
  std::nth_element(counts.begin(), middle, counts.end());
  return *middle;
}

}  // namespace commandfilter::benchmarks
