// Arguments or files that cannot be used.
#pragma once

#include <stdexcept>
#include <string>

namespace commandfilter::tools {

/// Ends the tool with exit status 2; the message names the argument or file, what is wrong with it
/// and what would be right.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace commandfilter::tools
