#include "LoadedObjects.h"

#include <sstream>

#include "harness/ScratchFolder.h"

namespace commandfilter::benchmarks {

std::optional<std::set<std::string>> loadedObjects(const Launcher& launcher, const Program& program,
                                                   const std::filesystem::path& scratch) {
  const std::string output = scratch / "loader";
  Launcher::Surroundings surroundings;
  surroundings.environment = {"LD_DEBUG=files", "LD_DEBUG_OUTPUT=" + output};
  const RunResult run = launcher.run(program, surroundings);
  const std::filesystem::path file = output + "." + std::to_string(run.pid);
  if (!std::filesystem::exists(file)) return std::nullopt;

  // Every object is initialised once, whether the loader knows it by one name or by several.
  const std::string marker = "calling init: ";
  std::set<std::string> all;
  std::istringstream lines(readFile(file));
  std::string line;
  while (std::getline(lines, line)) {
    const std::size_t found = line.find(marker);
    if (found != std::string::npos) all.insert(line.substr(found + marker.size()));
  }
  std::filesystem::remove(file);
  return all;
}

std::optional<LoadedObjects> countLoadedObjects(const Launcher& launcher, const Program& program,
                                                const std::filesystem::path& folder,
                                                const std::filesystem::path& scratch) {
  const auto all = loadedObjects(launcher, program, scratch);
  if (!all) return std::nullopt;
  const std::string start = folder.string() + "/";
  LoadedObjects result{all->size(), 0};
  for (const std::string& path : *all) {
    if (path.starts_with(start)) ++result.inFolder;
  }
  return result;
}

}  // namespace commandfilter::benchmarks
