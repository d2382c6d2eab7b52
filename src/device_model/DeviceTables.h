// What the Printer MIB (RFC 3805) tells about the parts of a printer beside its supplies.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "device_model/BackendTransport.h"

namespace commandfilter {

/// An input of prtInputTable.
struct InputTray {
  /// Unique among the printer's inputs.
  std::string identifier;
  /// Its name or, when it has none, its description; may be empty.
  std::string name;
  /// A word of the Printer MIB, such as `sheetFeedAutoRemovableTray`; empty when it is none.
  std::string type;
};

/// An entry of prtAlertTable.
struct DeviceAlert {
  /// Unique among the alerts.
  std::string identifier;
  /// `critical`, `warning`, `other`, or empty.
  std::string severity;
  /// The kind of event, a number of PrtAlertCodeTC.
  std::optional<std::int64_t> code;
  /// The printer's own words; may be empty.
  std::string description;
};

/// The printer's inputs; empty when the agent lists none.
[[nodiscard]] std::vector<InputTray> inputTraysOf(BackendTransport& backend);

/// The alerts that stand now; empty when there is none, or no agent.
[[nodiscard]] std::vector<DeviceAlert> alertsOf(BackendTransport& backend);

/// Whether one of the media paths turns the sheets; none when the agent lists no path that it has a
/// type for.
[[nodiscard]] std::optional<bool> hasDuplexer(BackendTransport& backend);

}  // namespace commandfilter
