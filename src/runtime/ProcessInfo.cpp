#include "runtime/ProcessInfo.h"

#include <cstdlib>

namespace commandfilter {

ProcessInfo& ProcessInfo::shared() {
  static ProcessInfo info;
  return info;
}

const ProcessInfo& ProcessInfo::processInfo() { return shared(); }

void ProcessInfo::recordArguments(std::span<char* const> arguments) {
  shared().arguments_.assign(arguments.begin(), arguments.end());
}

std::optional<std::string> ProcessInfo::environmentValue(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return std::string(value);
}

}  // namespace commandfilter
