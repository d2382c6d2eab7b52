#pragma once

#include <filesystem>
#include <string>

#include "Launcher.h"

namespace commandfilter::benchmarks {

// A copy of the filter's application whose only plug-ins are copies of one bundle.
class StagedApplication {
 public:
  struct Source {
    std::filesystem::path application;  // CommandFilter.app
    std::filesystem::path executable;   // below it; the copy runs from the copied application
    std::filesystem::path plugIn;       // the bundle that is multiplied
    std::string command;                // served by the bundle that the filter meets first
    bool deviceModel = true;            // with the framework, if the application has it
  };

  // `folder` must not exist yet. The launcher runs the dynamic loader, to see what the copy needs.
  static StagedApplication make(const Source& source, int bundles,
                                const std::filesystem::path& folder, const Launcher& launcher);

  const std::filesystem::path& executable() const { return executable_; }
  const std::filesystem::path& plugInFolder() const { return plugInFolder_; }

 private:
  std::filesystem::path executable_;
  std::filesystem::path plugInFolder_;
};

}  // namespace commandfilter::benchmarks
