// Measures the expression language: the engine beside Lua 5.4 and beside C++ written for the task,
// in one process and on the same data.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "Cases.h"
#include "Measurement.h"
#include "Report.h"

namespace commandfilter::benchmarks {

namespace {

constexpr int kExitMissed = 1;
constexpr int kExitFailed = 2;

struct Options {
  Effort effort{41, 2};
  std::string only;
  std::filesystem::path json;
  double engineSeconds = 0;
  bool reach = false;
};

void addOptions(CLI::App& app, Options& options) {
  app.add_option("--rounds", options.effort.rounds,
                 "Rounds at most; work that takes long has fewer")
      ->check(CLI::Range(7, 100000));
  app.add_option("--milliseconds", options.effort.millisecondsEach,
                 "How long each program works in a round")
      ->check(CLI::Range(0.01, 1000.0));
  app.add_option("--only", options.only, "Only the rows whose name has this text");
  app.add_option("--json", options.json, "Also write the figures to this file");
  app.add_option("--engine-only", options.engineSeconds,
                 "Only run the engine, so many seconds a row, for a profiler to look at");
  app.add_flag("--reach", options.reach, "Exit with 1 when a limit is missed by more than noise");
}

std::vector<Case> allCases() {
  std::vector<Case> all;
  for (const auto& theme : {compileCases, evaluateCases, supplyCases, sortCases, aggregateCases,
                            translateCases, setCases, macroCases}) {
    for (Case& each : theme()) all.push_back(std::move(each));
  }
  return all;
}

void runEngine(const Case& work, double seconds) {
  const Contenders contenders = work.make();
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  constexpr double kSlice = 1e6;
  const std::size_t times = timesToFill(*contenders.ours, kSlice);
  while (std::chrono::steady_clock::now() < end) contenders.ours->run(times);
}

int run(const Options& options) {
  if (options.engineSeconds > 0) {
    for (const Case& each : allCases()) {
      if (each.name.find(options.only) == std::string::npos) continue;
      runEngine(each, options.engineSeconds);
    }
    return 0;
  }
  std::vector<Row> rows;
  printHeader();
  for (const Case& each : allCases()) {
    if (each.name.find(options.only) == std::string::npos) continue;
    rows.push_back(measure(each, options.effort));
    print(rows.back());
  }
  if (!options.json.empty()) writeJson(rows, options.json);
  const bool missed =
      std::ranges::any_of(rows, [](const Row& row) { return row.verdict() == Verdict::Missed; });
  return options.reach && missed ? kExitMissed : 0;
}

}  // namespace

}  // namespace commandfilter::benchmarks

int main(int argc, char** argv) {
  namespace benchmarks = commandfilter::benchmarks;
  CLI::App app("The expression language beside Lua 5.4 and beside C++ written for the task");
  try {
    benchmarks::Options options;
    benchmarks::addOptions(app, options);
    app.parse(argc, argv);
    return benchmarks::run(options);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : benchmarks::kExitFailed;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "language_benchmark: FAILED: %s\n", error.what());
    return benchmarks::kExitFailed;
  }
}
