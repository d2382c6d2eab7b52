// What an evaluation asked for, in order.
#pragma once

#include <string>
#include <vector>

namespace commandfilter::testing {

/// One text for each call: "@name" or "@name: arguments" for a message to the device, the
/// components as an array for a feature path, "$Name" for a constant, "[Name]" for a value of the
/// template, the label alone for a _Probe.
using CallLog = std::vector<std::string>;

/// The calls in one line; "none" when there were none.
[[nodiscard]] inline std::string lineOf(const CallLog& log) {
  std::string line;
  for (const std::string& call : log) line.append(line.empty() ? "" : ", ").append(call);
  return line.empty() ? "none" : line;
}

}  // namespace commandfilter::testing
