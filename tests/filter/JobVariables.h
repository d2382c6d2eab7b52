// The part of a job that the scheduler hands over outside the arguments.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "runtime/ProcessInfo.h"

namespace commandfilter::testing {

inline constexpr const char* kDeviceURI = "socket://printer.example:9100";
inline constexpr const char* kQueueName = "Queue";
inline constexpr const char* kContentType = "application/vnd.cups-command";

/// Makes the environment of this process that of a command job. Takes it back when it goes.
class JobVariables {
 public:
  JobVariables() {
    setenv("DEVICE_URI", kDeviceURI, 1);
    setenv("PRINTER", kQueueName, 1);
    setenv("CONTENT_TYPE", kContentType, 1);
  }
  JobVariables(const JobVariables&) = delete;
  JobVariables& operator=(const JobVariables&) = delete;
  ~JobVariables() {
    for (const char* name : {"DEVICE_URI", "PRINTER", "CONTENT_TYPE"}) unsetenv(name);
  }
};

/// Records these as the arguments of this process, the program's name first.
inline void recordArguments(std::vector<std::string> arguments) {
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  ProcessInfo::recordArguments(pointers);
}

/// The arguments of a job whose command file comes on standard input.
inline const std::vector<std::string> kSixArguments{"Queue", "1", "user", "title", "1", "options"};

}  // namespace commandfilter::testing
