#include "comparison/ComparisonProgram.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <iterator>

#include "comparison/ComparisonReport.h"
#include "comparison/Measurement.h"
#include "harness/Program.h"

namespace commandfilter::benchmarks {

namespace {

struct Options {
  Effort effort{41, 2};
  std::string only;
  std::filesystem::path json;
  std::size_t engineTimes = 0;
  std::size_t luaTimes = 0;
  bool check = false;
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
  app.add_option("--engine-only", options.engineTimes,
                 "Only run the engine, so many times a row, for a profiler to look at");
  app.add_option("--lua-only", options.luaTimes, "The same with Lua");
  app.add_flag("--check", options.check, "Only compare the results");
  app.add_flag("--reach", options.reach, "Exit with 1 when a limit is missed by more than noise");
}

int run(const Options& options, const std::vector<Case>& cases) {
  std::vector<Case> chosen;
  std::ranges::copy_if(cases, std::back_inserter(chosen), [&options](const Case& each) {
    return each.name.find(options.only) != std::string::npos;
  });
  if (options.engineTimes > 0 || options.luaTimes > 0) {
    for (const Case& each : chosen) {
      const Contenders contenders = each.make();
      if (options.engineTimes > 0) contenders.ours->run(options.engineTimes);
      if (options.luaTimes > 0) contenders.lua->run(options.luaTimes);
    }
    return 0;
  }
  if (options.check) {
    for (const Case& each : chosen) {
      compared(each);
      std::printf("%s: the same\n", each.name.c_str());
    }
    return 0;
  }
  std::vector<Row> rows;
  printHeader();
  for (const Case& each : chosen) {
    rows.push_back(measure(each, options.effort));
    print(rows.back());
  }
  if (!options.json.empty()) writeJson(rows, options.json);
  const bool missed =
      std::ranges::any_of(rows, [](const Row& row) { return row.verdict() == Verdict::Missed; });
  return options.reach && missed ? kExitMissed : 0;
}

}  // namespace

int runComparison(int argc, char** argv, const std::string& description,
                  const std::vector<Case>& cases) {
  Options options;
  return runProgram(
      argc, argv, description, [&](CLI::App& app) { addOptions(app, options); },
      [&] { return run(options, cases); });
}

}  // namespace commandfilter::benchmarks
