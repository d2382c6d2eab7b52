#include "integration/PrivateScheduler.h"

#include <unistd.h>

#include <chrono>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "support/File.h"

namespace commandfilter::testing {

namespace fs = std::filesystem;

namespace {

ChildResult runScript(std::vector<std::string> arguments) {
  ChildOptions options;
  options.program = SCHEDULER_FOLDER "/private-scheduler";
  arguments.insert(arguments.begin(), options.program);
  options.arguments = std::move(arguments);
  for (char** variable = environ; *variable != nullptr; ++variable) {
    options.environment.emplace_back(*variable);
  }
  // Longer than what the script itself waits for.
  options.timeLimit = std::chrono::minutes(5);
  return runChild(options);
}

[[noreturn]] void fail(const std::string& what, const ChildResult& result) {
  throw std::runtime_error(what + ": " + (result.timedOut ? "no end" : result.errors));
}

int numberOfJob(const std::string& output) {
  std::size_t end = 0;
  const int job = std::stoi(output, &end);
  if (end + 1 != output.size()) throw std::runtime_error("not a job's number: " + output);
  return job;
}

}  // namespace

std::string PrivateScheduler::unavailable() {
  const ChildResult result = runScript({"check"});
  return result.exitStatus == 0 ? std::string() : "private-scheduler check: " + result.errors;
}

fs::path PrivateScheduler::ppd() { return SCHEDULER_FOLDER "/command-filter.ppd"; }

PrivateScheduler::PrivateScheduler(const std::map<std::string, std::string>& filterEnvironment) {
  // When this process is gone without a word, the scheduler goes too.
  std::vector<std::string> arguments = {"start", root().string(), "--owner",
                                        std::to_string(getpid())};
  for (const auto& [name, value] : filterEnvironment) {
    arguments.insert(arguments.end(), {"--set-env", std::string(name).append("=").append(value)});
  }
  const ChildResult result = runScript(std::move(arguments));
  if (result.exitStatus != 0) fail("private-scheduler start", result);
  std::istringstream lines(readFile(root() / "environment"));
  constexpr std::string_view kPrefix = "export ";
  for (std::string line; std::getline(lines, line);) {
    const std::size_t equals = line.find('=');
    if (!line.starts_with(kPrefix) || equals == std::string::npos) continue;
    variables_[line.substr(kPrefix.size(), equals - kPrefix.size())] = line.substr(equals + 1);
  }
}

PrivateScheduler::~PrivateScheduler() {
  try {
    (void)runScript({"stop", root().string()});
  } catch (const std::exception&) {
    // Then the end of this process stops the scheduler.
  }
}

const std::string& PrivateScheduler::variable(std::string_view name) const {
  const auto found = variables_.find(name);
  if (found == variables_.end()) {
    throw std::runtime_error("the scheduler has no variable " + std::string(name));
  }
  return found->second;
}

void PrivateScheduler::addFilter(const fs::path& program) const {
  command({"add-filter", root().string(), program.string()});
}

void PrivateScheduler::addBackend(const fs::path& program, const std::string& scheme) const {
  std::vector<std::string> arguments = {"add-backend", root().string(), program.string()};
  if (!scheme.empty()) arguments.push_back(scheme);
  command(std::move(arguments));
}

void PrivateScheduler::addQueue(const std::string& queue, const std::string& deviceUri,
                                const fs::path& ppd) const {
  command({"add-queue", root().string(), queue, deviceUri, ppd.string()});
}

fs::path PrivateScheduler::addRecordingQueue(const std::string& queue, const fs::path& ppd,
                                             const std::string& scheme) const {
  fs::path record = fs::path(variable("RECORDS")) / queue;
  addBackend(RECORDING_BACKEND, scheme);
  addQueue(queue, scheme + "://" + record.string(), ppd);
  return record;
}

int PrivateScheduler::submit(const std::string& queue, const fs::path& file,
                             const std::vector<std::string>& options) const {
  std::vector<std::string> arguments = {"submit", root().string(), queue, file.string()};
  arguments.insert(arguments.end(), options.begin(), options.end());
  return numberOfJob(command(std::move(arguments)));
}

int PrivateScheduler::submitCompressed(const std::string& queue, const fs::path& file) const {
  return numberOfJob(command({"submit", root().string(), queue, file.string(), "--gzip"}));
}

std::string PrivateScheduler::wait(int job) const {
  std::string state = command({"wait", root().string(), std::to_string(job)});
  if (state.ends_with('\n')) state.pop_back();
  return state;
}

std::vector<PrivateScheduler::LogLine> PrivateScheduler::log(int job) const {
  std::istringstream lines(command({"log", root().string(), std::to_string(job), "--levels"}));
  std::vector<LogLine> log;
  for (std::string line; std::getline(lines, line);) {
    if (line.size() >= 2) log.push_back({line[0], line.substr(2)});
  }
  return log;
}

std::map<std::string, std::string> PrivateScheduler::attributes(const std::string& queue) const {
  std::istringstream lines(command({"attributes", root().string(), queue}));
  std::map<std::string, std::string> attributes;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t name = line.find(" (");
    const std::size_t value = line.find(") = ");
    if (name == std::string::npos || value == std::string::npos) continue;
    attributes[line.substr(0, name)] = line.substr(value + 4);
  }
  return attributes;
}

ChildResult PrivateScheduler::client(const std::vector<std::string>& arguments) const {
  ChildOptions options;
  options.program = "/usr/bin/env";
  options.arguments = {"env"};
  options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
  options.environment = {"PATH=/usr/bin:/usr/sbin:/bin:/sbin", "LC_ALL=C.UTF-8"};
  for (const auto& [name, value] : variables_) {
    options.environment.push_back(std::string(name).append("=").append(value));
  }
  return runChild(options);
}

std::string PrivateScheduler::command(std::vector<std::string> arguments) const {
  const std::string name = "private-scheduler " + arguments.front();
  ChildResult result = runScript(std::move(arguments));
  if (result.exitStatus != 0) fail(name, result);
  return std::move(result.output);
}

}  // namespace commandfilter::testing
