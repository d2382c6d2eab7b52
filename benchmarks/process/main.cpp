// Measures whole processes, from exec to exit: the command filter beside its peers, in one run.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "DeviceJobs.h"
#include "InstructionCounter.h"
#include "Launcher.h"
#include "Limits.h"
#include "LoadedObjects.h"
#include "PairedMeasurement.h"
#include "Report.h"
#include "StagedApplication.h"
#include "Summary.h"
#include "TemplateJobs.h"
#include "harness/Program.h"
#include "harness/ScratchFolder.h"

namespace commandfilter::benchmarks {

namespace {

namespace fs = std::filesystem;

constexpr int kLeastRounds = 10;
constexpr char kHeader[] = "#CUPS-COMMAND\n";
constexpr char kUnknownCommand[] = "NoPlugInAnswersThisCommand";

struct Options {
  fs::path tools = fs::read_symlink("/proc/self/exe").parent_path();
  fs::path commandFile;
  fs::path commandToPs = "/usr/lib/cups/filter/commandtops";
  fs::path filter;
  fs::path application;
  fs::path plugIn;
  fs::path admtemplate;
  fs::path lua = "/usr/bin/lua5.4";
  fs::path jq = "/usr/bin/jq";
  std::vector<std::string> programs;
  std::vector<std::string> statuses;
  std::string base = "commandtops";
  fs::path json;
  std::size_t rounds = 200;
  std::size_t scalingRounds = 16;
  int instructionRuns = 3;
  int bundles = 1000;
  bool instructions = true;
  bool scaling = true;
  bool answers = true;
  bool reach = false;
  bool strict = false;
};

void addOptions(CLI::App& app, Options& options) {
  app.add_option("--command-file", options.commandFile, "Command file with one command")
      ->required()
      ->check(CLI::ExistingFile);
  app.add_option("--tools", options.tools,
                 "Folder with process_launcher, empty_c and empty_cups (default: this one's own)");
  app.add_option("--commandtops", options.commandToPs, "The peer that comes with CUPS");
  app.add_option("--filter", options.filter, "The filter to measure, as it is installed")
      ->check(CLI::ExistingFile);
  app.add_option("--bundle-farm", options.application,
                 "CommandFilter.app: also measure a copy of it with one and with many plug-ins")
      ->check(CLI::ExistingDirectory);
  app.add_option("--plugin", options.plugIn,
                 "Bundle that is multiplied for --bundle-farm; its list of commands is replaced. "
                 "Without --filter, the copy with this one bundle is what is measured")
      ->check(CLI::ExistingDirectory);
  app.add_option("--admtemplate", options.admtemplate,
                 "The tool for templates, as it is installed: also measure one value of a template")
      ->check(CLI::ExistingFile);
  app.add_option("--lua", options.lua, "A peer of that tool");
  app.add_option("--jq", options.jq, "Another peer of it");
  app.add_option("--bundles", options.bundles, "Bundles of the farm")->check(CLI::Range(2, 99999));
  app.add_option("--program", options.programs, "Another program, as NAME=COMMAND LINE");
  app.add_option("--expect", options.statuses, "Exit status of one of those, as NAME=STATUS");
  app.add_option("--base", options.base, "Name of the program that the ratios refer to");
  app.add_option("--rounds", options.rounds, "Rounds of the comparison")
      ->check(CLI::Range(kLeastRounds, 1000000));
  app.add_option("--scaling-rounds", options.scalingRounds, "Rounds with long command files")
      ->check(CLI::Range(3, 1000000));
  app.add_option("--instruction-runs", options.instructionRuns, "Runs under callgrind, each")
      ->check(CLI::Range(1, 100));
  app.add_option("--json", options.json, "Also write the figures to this file");
  app.add_flag("!--no-instructions", options.instructions, "Do not count instructions");
  app.add_flag("!--no-scaling", options.scaling, "Leave long command files out");
  app.add_flag("!--no-answers", options.answers,
               "Do not require that the filter answers (for a stand-in)");
  app.add_flag("--reach", options.reach, "Exit with 1 when a limit is exceeded");
  app.add_flag("--strict", options.strict,
               "With --reach: wall time, growth and what was not measured count too");
}

std::pair<std::string, std::string> splitPair(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0 || equals + 1 == text.size()) {
    throw std::runtime_error("\"" + text + "\" is not NAME=VALUE");
  }
  return {text.substr(0, equals), text.substr(equals + 1)};
}

std::string commandOf(const fs::path& file) {
  std::istringstream lines(readFile(file));
  std::string line;
  std::string command;
  while (std::getline(lines, line)) {
    if (line.empty() || line.starts_with("#")) continue;
    if (!command.empty()) throw std::runtime_error(file.string() + " has several commands");
    command = line;
  }
  if (command.empty()) throw std::runtime_error(file.string() + " has no command");
  return command;
}

class Benchmark {
 public:
  explicit Benchmark(const Options& options);

  Report measure();

 private:
  Program filterJob(const std::string& name, const fs::path& path, const fs::path& file) const;
  Program filterJobFromInput(const std::string& name, const fs::path& path,
                             const fs::path& file) const;
  std::vector<Program> peers() const;
  void requireAnswers(const Program& program, long least) const;
  long reportedLines(const Program& program) const;
  void countInstructions(std::vector<Series>& all, int runs) const;
  void measurePrograms();
  void measureDevices();
  void measureScaling();
  void measureBundles();
  void measureTemplates();
  StagedApplication stage(int bundles, const std::string& folder, bool deviceModel = true) const;

  const Options& options_;
  ScratchFolder scratch_;
  Launcher launcher_;
  std::optional<InstructionCounter> counter_;
  std::string command_;
  fs::path unknownFile_;
  std::optional<StagedApplication> oneBundle_;
  fs::path filter_;
  Report report_;
};

Benchmark::Benchmark(const Options& options)
    : options_(options),
      launcher_(options.tools / "process_launcher"),
      command_(commandOf(options.commandFile)),
      unknownFile_(scratch_.write("unknown", std::string(kHeader) + kUnknownCommand + "\n")),
      filter_(options.filter) {
  if (options.instructions) {
    counter_ = InstructionCounter::find(scratch_.path());
    if (!counter_) report_.notes.emplace_back("valgrind is not installed: no instructions counted");
  }
  if (!options.application.empty()) {
    if (options.plugIn.empty()) throw std::runtime_error("--bundle-farm needs --plugin");
    oneBundle_ = stage(1, "one");
    if (filter_.empty()) filter_ = oneBundle_->executable();
  }
  if (filter_.empty() && options.reach) throw std::runtime_error("--reach without a filter");
  if (filter_.empty()) report_.notes.emplace_back("no --filter given: the peers alone");
}

StagedApplication Benchmark::stage(int bundles, const std::string& folder, bool deviceModel) const {
  const fs::path binaries = options_.application / "Contents" / "Linux";
  fs::path executable = binaries / "commandfilter";
  if (!options_.filter.empty()) executable = binaries / fs::canonical(options_.filter).filename();
  return StagedApplication::make(
      {options_.application, executable, options_.plugIn, command_, deviceModel}, bundles,
      scratch_.path() / folder, launcher_);
}

// A filter is called by the name of its queue.
Program Benchmark::filterJob(const std::string& name, const fs::path& path,
                             const fs::path& file) const {
  const char* queue = std::getenv("PRINTER");
  return {
      name, path, {queue == nullptr ? "benchmark" : queue, "1", "user", "title", "1", "", file}};
}

Program Benchmark::filterJobFromInput(const std::string& name, const fs::path& path,
                                      const fs::path& file) const {
  Program program = filterJob(name, path, file);
  program.arguments.pop_back();
  program.standardInput = file;
  return program;
}

std::vector<Program> Benchmark::peers() const {
  const fs::path emptyC = options_.tools / "empty_c";
  const fs::path emptyCups = options_.tools / "empty_cups";
  std::vector<Program> result = {
      {"empty C", emptyC, {"empty_c"}},
      {"empty C + libcups", emptyCups, {"empty_cups"}},
      filterJob("commandtops", options_.commandToPs, options_.commandFile),
  };
  for (const std::string& option : options_.programs) {
    const auto [name, commandLine] = splitPair(option);
    std::istringstream words(commandLine);
    Program program;
    program.name = name;
    std::string word;
    while (words >> word) program.arguments.push_back(word);
    if (program.arguments.empty()) throw std::runtime_error(name + " has no command line");
    program.path = program.arguments.front();
    result.push_back(program);
  }
  for (const std::string& option : options_.statuses) {
    const auto [name, status] = splitPair(option);
    const auto found = std::find_if(result.begin(), result.end(),
                                    [&name = name](const auto& each) { return each.name == name; });
    if (found == result.end()) throw std::runtime_error("no program is named " + name);
    found->expectedStatus = std::stoi(status);
  }
  return result;
}

long Benchmark::reportedLines(const Program& program) const {
  Launcher::Surroundings surroundings;
  surroundings.standardError = scratch_.path() / "stderr";
  launcher_.run(program, surroundings);
  const std::string text = readFile(surroundings.standardError);
  return std::count(text.begin(), text.end(), '\n');
}

// The filter's status tells nothing about its commands: what it reports does.
void Benchmark::requireAnswers(const Program& program, long least) const {
  if (!options_.answers) return;
  const long lines = reportedLines(program);
  if (lines < least) {
    throw std::runtime_error(program.name + " (" + program.path.string() + "): reports " +
                             std::to_string(lines) + " lines for " + std::to_string(least) +
                             " times \"" + command_ + "\"");
  }
}

void Benchmark::countInstructions(std::vector<Series>& all, int runs) const {
  if (!counter_) return;
  for (Series& series : all) {
    series.instructions = counter_->count(launcher_, series.program, runs);
  }
}

void Benchmark::measurePrograms() {
  std::vector<Program> programs = peers();
  if (!filter_.empty()) {
    std::vector<Program> ours = {
        filterJob("commandfilter", filter_, options_.commandFile),
        filterJob("commandfilter, unknown command", filter_, unknownFile_),
        filterJobFromInput("commandfilter, standard input", filter_, options_.commandFile),
    };
    const long unanswered = reportedLines(ours[1]);
    requireAnswers(ours[0], unanswered + 1);
    requireAnswers(ours[2], unanswered + 1);
    for (Program& program : ours) {
      program.ours = true;
      programs.push_back(program);
    }
  }
  const auto base = std::find_if(programs.begin(), programs.end(), [this](const Program& each) {
    return each.name == options_.base;
  });
  if (base == programs.end()) throw std::runtime_error("no program is named " + options_.base);

  report_.launcherKib = launcher_.run(programs.front()).launcherKib;
  std::vector<Series> all = measureInterleaved(launcher_, programs, {options_.rounds});
  countInstructions(all, options_.instructionRuns);
  report_.programs = Table{"Whole processes", options_.base, options_.rounds,
                           summarise(all, static_cast<std::size_t>(base - programs.begin()))};
  const auto checks = checkAgainstBase(report_.programs->rows, options_.strict);
  report_.limits.insert(report_.limits.end(), checks.begin(), checks.end());
}

void Benchmark::measureDevices() {
  const StagedApplication without = stage(1, "without", false);
  DeviceJobs jobs;
  jobs.base = filterJob("commandtops", options_.commandToPs, options_.commandFile);
  jobs.job = filterJob("job", oneBundle_->executable(), options_.commandFile);
  jobs.job.ours = true;
  jobs.jobWithoutIt = jobs.job;
  jobs.jobWithoutIt.path = without.executable();
  jobs.scratch = scratch_.path();
  const std::vector<Program> programs = jobs.programs();
  constexpr std::size_t kFirstWithDevice = 3;
  for (std::size_t i = kFirstWithDevice; i < programs.size(); ++i) {
    requireDummyJob(launcher_, programs[i], scratch_.path());
  }
  std::vector<Series> all = measureInterleaved(launcher_, programs, {options_.rounds});
  countInstructions(all, options_.instructionRuns);
  report_.devices =
      Table{"Jobs and their devices", programs.front().name, options_.rounds, summarise(all, 0)};
  const auto checks = checkAgainstBase(report_.devices->rows, options_.strict);
  report_.limits.insert(report_.limits.end(), checks.begin(), checks.end());
  for (const Program& program : programs) {
    if (program.deviceID.empty()) continue;
    const double requests = launcher_.run(program).requests;
    report_.limits.push_back({program.name, "requests to the backend", requests, kRequestLimit});
  }
}

void Benchmark::measureScaling() {
  const std::vector<long> lines = {1, 1000, 10000, 100000};
  std::vector<Program> programs;
  for (const long count : lines) {
    std::string text = kHeader;
    for (long i = 0; i < count; ++i) text += command_ + "\n";
    const std::string name = std::to_string(count) + (count == 1 ? " line" : " lines");
    programs.push_back(filterJob(name, filter_, scratch_.write("lines" + name, text)));
    requireAnswers(programs.back(), count);
  }
  std::vector<Series> all = measureInterleaved(launcher_, programs, {options_.scalingRounds, 1});
  countInstructions(all, 1);
  report_.scaling = Table{"The filter on long command files", programs.front().name,
                          options_.scalingRounds, summarise(all, 0)};
  report_.growth = growth(all, lines);
  const auto checks = checkGrowth(report_.growth, options_.strict);
  report_.limits.insert(report_.limits.end(), checks.begin(), checks.end());
}

void Benchmark::measureBundles() {
  const StagedApplication farm = stage(options_.bundles, "farm");
  const std::string many = std::to_string(options_.bundles) + " bundles";
  std::vector<Program> programs = {
      filterJob("1 bundle", oneBundle_->executable(), options_.commandFile),
      filterJob(many + ", the first serves", farm.executable(), options_.commandFile),
      filterJob(many + ", none serves", farm.executable(), unknownFile_),
  };
  requireAnswers(programs[0], 1);
  requireAnswers(programs[1], 1);
  std::vector<Series> all = measureInterleaved(launcher_, programs, {options_.rounds});
  countInstructions(all, 1);
  report_.bundles =
      Table{"Many plug-in bundles", programs.front().name, options_.rounds, summarise(all, 0)};
  for (std::size_t i = 0; i < programs.size(); ++i) {
    const StagedApplication& application = i == 0 ? *oneBundle_ : farm;
    report_.loads.push_back(
        {programs[i].name,
         countLoadedObjects(launcher_, programs[i], application.plugInFolder(), scratch_.path())});
  }
  LimitCheck check{programs[1].name, "plug-ins loaded", std::nullopt, 1, options_.strict};
  if (const auto& loaded = report_.loads[1].loaded) {
    check.value = static_cast<double>(loaded->inFolder);
  }
  report_.limits.push_back(check);
}

void Benchmark::measureTemplates() {
  const std::vector<Program> programs =
      TemplateJobs{options_.admtemplate, options_.lua, options_.jq, scratch_.path()}.programs();
  requireSameOutput(launcher_, programs, scratch_.path());
  std::vector<Series> all = measureInterleaved(launcher_, programs, {options_.rounds});
  countInstructions(all, options_.instructionRuns);
  report_.templates =
      Table{"One value of a template", programs.front().name, options_.rounds, summarise(all, 0)};
  const Series& ours = all.back();
  std::optional<std::size_t> cupsLibraries;
  if (const auto loaded = loadedObjects(launcher_, ours.program, scratch_.path())) {
    cupsLibraries = std::ranges::count_if(*loaded, [](const std::string& path) {
      return fs::path(path).filename().string().starts_with("libcups");
    });
  }
  const auto checks = checkTemplateJob(summarise(ours, all[0]), summarise(ours, all[1]),
                                       cupsLibraries, options_.strict);
  report_.limits.insert(report_.limits.end(), checks.begin(), checks.end());
}

Report Benchmark::measure() {
  measurePrograms();
  if (oneBundle_ && fs::is_directory(options_.application / "Contents" / "Frameworks" /
                                     "VemoDeviceModel.bundle")) {
    measureDevices();
  }
  if (!filter_.empty() && options_.scaling) measureScaling();
  if (oneBundle_) measureBundles();
  if (!options_.admtemplate.empty()) measureTemplates();
  return std::move(report_);
}

int run(const Options& options) {
  const Report report = Benchmark(options).measure();
  print(report);
  if (!options.json.empty()) writeJson(report, options.json);
  const bool failed = std::any_of(report.limits.begin(), report.limits.end(),
                                  [](const LimitCheck& check) { return check.fails(); });
  return options.reach && failed ? kExitMissed : 0;
}

}  // namespace

}  // namespace commandfilter::benchmarks

int main(int argc, char** argv) {
  using namespace commandfilter::benchmarks;  // NOLINT(google-build-using-namespace)
  Options options;
  return runProgram(
      argc, argv, "Whole processes, from exec to exit: the product's programs beside their peers",
      [&](CLI::App& app) { addOptions(app, options); }, [&] { return run(options); });
}
