#include "StagedApplication.h"

#include <array>
#include <cstdio>
#include <map>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "harness/ScratchFolder.h"

namespace commandfilter::benchmarks {

namespace fs = std::filesystem;

namespace {

std::string escaped(const std::string& text) {
  std::string result;
  for (const char character : text) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      default:
        result += character;
    }
  }
  return result;
}

// Sets a key of an information property list in its XML form to an array of one text.
void setArray(const fs::path& file, const std::string& key, const std::string& value) {
  std::string text = readFile(file);
  const std::string keyText = "<key>" + key + "</key>";
  const std::string array = "<array><string>" + escaped(value) + "</string></array>";
  const std::size_t found = text.find(keyText);
  if (found != std::string::npos) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n", found + keyText.size());
    std::size_t end = std::string::npos;
    for (const std::string& last : {std::string("<array/>"), std::string("</array>")}) {
      const std::size_t at = text.find(last, found);
      if (at != std::string::npos && (end == std::string::npos || at + last.size() < end)) {
        end = at + last.size();
      }
    }
    if (begin == std::string::npos || text.compare(begin, 6, "<array") != 0 ||
        end == std::string::npos) {
      throw std::runtime_error(file.string() + ": \"" + key + "\" is no array");
    }
    text.replace(begin, end - begin, array);
  } else {
    const std::size_t end = text.rfind("</dict>");
    if (end == std::string::npos) {
      throw std::runtime_error(file.string() + " is no property list in XML");
    }
    text.insert(end, keyText + array);
  }
  writeFile(file, text);
}

// The libraries that the loader finds for a program ("not found" included), by name.
std::map<std::string, std::string> libraries(const Launcher& launcher, const fs::path& program,
                                             const fs::path& scratch) {
  Launcher::Surroundings surroundings;
  surroundings.standardOutput = scratch;
  surroundings.environment = {"LD_TRACE_LOADED_OBJECTS=1"};
  launcher.run({"the loader", program, {program.string()}}, surroundings);
  std::map<std::string, std::string> result;
  std::istringstream lines(readFile(scratch));
  fs::remove(scratch);
  std::string line;
  while (std::getline(lines, line)) {
    std::istringstream words(line);
    std::string name;
    std::string arrow;
    std::string path;
    if (words >> name >> arrow >> path && arrow == "=>") result[name] = path;
  }
  return result;
}

// A run path that is relative to the program needs its libraries at the same place again.
void linkLibraries(const Launcher& launcher, const fs::path& original, const fs::path& copy,
                   const fs::path& root) {
  const fs::path scratch = root / "libraries.txt";
  const auto wanted = libraries(launcher, original, scratch);
  for (const auto& [name, path] : libraries(launcher, copy, scratch)) {
    if (path.starts_with("/")) continue;
    const auto entry = wanted.find(name);
    if (entry == wanted.end() || !entry->second.starts_with("/")) {
      throw std::runtime_error(original.string() + " lacks the library " + name);
    }
    const fs::path link = root / fs::path(entry->second).lexically_normal().relative_path();
    fs::create_directories(link.parent_path());
    fs::create_symlink(fs::canonical(entry->second), link);
  }
  for (const auto& [name, path] : libraries(launcher, copy, scratch)) {
    if (!path.starts_with("/")) {
      throw std::runtime_error("a copy of " + original.string() + " does not find " + name);
    }
  }
}

void copyBundles(const StagedApplication::Source& source, int bundles, const fs::path& folder) {
  constexpr auto kOptions = fs::copy_options::recursive | fs::copy_options::copy_symlinks;
  fs::create_directories(folder);
  for (int i = 1; i <= bundles; ++i) {
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "%05d", i);
    const fs::path bundle = folder / (source.plugIn.stem().string() + number.data() +
                                      source.plugIn.extension().string());
    // Whole copies, as two names of one file are one object for the loader.
    fs::copy(source.plugIn, bundle, kOptions);
    setArray(bundle / "Contents" / "Info.plist", "SupportedCommands",
             "another command " + std::to_string(i));
  }
  // The order is the file system's own, so which bundle comes first is seen only afterwards.
  const fs::path first = fs::directory_iterator(folder)->path();
  setArray(first / "Contents" / "Info.plist", "SupportedCommands", source.command);
}

}  // namespace

StagedApplication StagedApplication::make(const Source& source, int bundles, const fs::path& folder,
                                          const Launcher& launcher) {
  StagedApplication result;
  result.plugInFolder_ = folder / "Bundles";
  copyBundles(source, bundles, result.plugInFolder_);

  const fs::path application = fs::canonical(source.application);
  const fs::path executable = fs::canonical(source.executable);
  const fs::path inside = executable.lexically_relative(application);
  if (inside.empty() || inside.begin()->string() == "..") {
    throw std::runtime_error(executable.string() + " does not lie in " + application.string());
  }
  const fs::path copy = folder / application.relative_path();
  result.executable_ = copy / inside;
  fs::create_directories(result.executable_.parent_path());
  fs::copy_file(executable, result.executable_);

  const fs::path contents = application / "Contents";
  for (const fs::directory_entry& entry : fs::directory_iterator(contents)) {
    const fs::path name = entry.path().filename();
    const fs::path target = copy / "Contents" / name;
    if (name == "Info.plist") {
      fs::copy_file(entry.path(), target);
    } else if (name == "Frameworks" && !source.deviceModel) {
      fs::create_directory(target);
    } else if (name != "PlugIns" && !fs::exists(target)) {
      fs::create_symlink(entry.path(), target);
    }
  }
  setArray(copy / "Contents" / "Info.plist", "PlugInLocations", result.plugInFolder_.string());
  linkLibraries(launcher, executable, result.executable_, folder);
  return result;
}

}  // namespace commandfilter::benchmarks
