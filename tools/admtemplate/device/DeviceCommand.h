// admtemplate device
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace commandfilter::tools {

enum class DeviceFormat { Text, PropertyList };

/// What the user asks `admtemplate device` for.
struct DeviceArguments {
  /// None lists what can be named.
  std::optional<std::string> device;
  DeviceFormat format = DeviceFormat::Text;
};

/// Writes what the device model knows of the device, or which devices there are. Gives the exit
/// status: 0, or 1 when a real device does not answer.
/// @throws UsageError when the device cannot be used.
[[nodiscard]] int runDevice(const DeviceArguments& arguments, std::ostream& report,
                            std::ostream& messages);

}  // namespace commandfilter::tools
