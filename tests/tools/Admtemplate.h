// The tool as a user runs it.
#pragma once

#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace commandfilter::testing {

/// Runs `admtemplate` with these arguments; `variables` ("NAME=value") are added to an environment
/// that holds nothing but a path.
inline ChildResult runAdmtemplate(const std::vector<std::string>& arguments,
                                  const std::string& input = {},
                                  const std::vector<std::string>& variables = {}) {
  ChildOptions options;
  options.program = ADMTEMPLATE;
  options.arguments = {"admtemplate"};
  options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
  options.environment = {"PATH=/usr/bin:/bin"};
  options.environment.insert(options.environment.end(), variables.begin(), variables.end());
  options.input = input;
  return runChild(options);
}

}  // namespace commandfilter::testing
