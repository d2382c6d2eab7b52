#include "process/FilterApplication.h"

#include <array>
#include <cstdlib>
#include <string_view>

#include "TestBundles.h"
#include "support/ChildProcess.h"
#include "support/File.h"

namespace commandfilter::testing {

namespace fs = std::filesystem;

FilterApplication::FilterApplication() {
  addApplication(root(), locations_);
  // The program finds its bundle through the file that it was started from, so it takes a copy.
  fs::copy_file(FILTER_PROGRAM, program());
}

fs::path FilterApplication::addFolder() {
  const fs::path folder = root() / ("plugins " + std::to_string(locations_.size()));
  fs::create_directory(folder);
  locations_.push_back(folder.string());
  addApplication(root(), locations_);
  return folder;
}

void FilterApplication::addPlugIn(const std::string& name) {
  fs::create_directory_symlink(builtBundle(name), addFolder() / (name + ".bundle"));
}

void FilterApplication::addBuiltInPlugIn(const std::string& name) {
  fs::create_directories(contents() / "PlugIns");
  fs::create_directory_symlink(builtBundle(name), contents() / "PlugIns" / (name + ".bundle"));
}

Outcome FilterApplication::run(const Job& job) const {
  ChildOptions options;
  options.program = job.program.value_or(program()).string();
  options.arguments = job.arguments;
  if (job.onInput) {
    options.input = job.commandFile;
  } else if (job.path) {
    options.arguments.push_back(*job.path);
  } else {
    const fs::path file = root() / "commands";
    writeFile(file, job.commandFile);
    options.arguments.push_back(file.string());
  }
  for (const auto& [name, value] : job.environment) {
    options.environment.push_back(name + '=' + value);
  }
  options.closed = job.closed;
  options.sideChannel = job.sideChannel;
  options.started = job.started;
  const ChildResult result = runChild(options);
  Outcome outcome;
  if (result.signal == 0 && !result.timedOut) outcome.status = result.exitStatus;
  outcome.signal = result.signal;
  outcome.output = result.output;
  outcome.errors = result.errors;
  outcome.peakKilobytes = result.peakKilobytes;
  return outcome;
}

}  // namespace commandfilter::testing
