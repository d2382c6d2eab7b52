#include "harness/Program.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <filesystem>

namespace commandfilter::benchmarks {

int runProgram(int argc, char** argv, const std::string& description,
               const std::function<void(CLI::App&)>& addOptions, const std::function<int()>& run) {
  CLI::App app(description);
  try {
    addOptions(app);
    app.parse(argc, argv);
    return run();
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kExitFailed;
  } catch (const std::exception& error) {
    const std::string name = std::filesystem::path(argv[0]).filename();
    std::fprintf(stderr, "%s: FAILED, no figures: %s\n", name.c_str(), error.what());
    return kExitFailed;
  }
}

}  // namespace commandfilter::benchmarks
