// What evaluations are made over, from files and options.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Device.h"
#include "Evaluation.h"

namespace commandfilter::tools {

/// The options that name it; subcommands share them.
struct SettingArguments {
  std::optional<std::string> configurationTemplate;
  std::optional<std::string> device;
  std::optional<std::string> input;
  std::vector<std::string> plugIns;
};

/// A template, input parameters and a device, each of which may be missing.
struct Setting {
  /// nothing without a device. It goes last: the services ask it.
  std::optional<Device> device;
  Question question;
};

/// Reads the files, loads the plug-ins and opens the device.
/// @throws UsageError when one of them cannot be used.
[[nodiscard]] Setting loadSetting(const SettingArguments& arguments);

}  // namespace commandfilter::tools
