#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace commandfilter::benchmarks {

// What a benchmark program ends with besides 0: a limit is missed, or there are no figures.
inline constexpr int kExitMissed = 1;
inline constexpr int kExitFailed = 2;

// The main function of a benchmark program: `addOptions` says what it takes, `run` does the work
// and gives the exit status. What they throw ends the program with a message.
int runProgram(int argc, char** argv, const std::string& description,
               const std::function<void(CLI::App&)>& addOptions, const std::function<int()>& run);

}  // namespace commandfilter::benchmarks
