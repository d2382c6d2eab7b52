// A printer's SNMP agent.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "support/BackgroundProcess.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {

/// net-snmp's agent on the SNMP port of an address, with the Printer MIB of a colour printer.
class PrinterAgent {
 public:
  /// Why no agent can be had at the address; empty when it can.
  [[nodiscard]] static std::string unavailable(const std::string& address);
  /// The objects of the printer; see PrinterAgentValues.cpp for the form.
  [[nodiscard]] static std::filesystem::path values();

  /// Starts the agent and waits until it answers. `values`: the text of the file of objects.
  /// @throws std::runtime_error when it does not.
  PrinterAgent(const std::string& address, const std::string& values);

 private:
  TemporaryFolder folder_;
  std::unique_ptr<BackgroundProcess> agent_;
};

}  // namespace commandfilter::testing
