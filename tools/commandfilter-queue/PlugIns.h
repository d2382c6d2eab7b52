// What the filter finds when it looks for plug-ins.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "runtime/Trust.h"

namespace commandfilter::tools {

/// The user as whom the scheduler runs filters.
struct FilterUser {
  std::string name;
  uid_t user = 0;
  gid_t group = 0;
};

/// The user of that name, else `lp`, as whom Debian's scheduler runs filters, else the one of this
/// process.
/// @throws ToolError when there is no user of that name.
[[nodiscard]] FilterUser filterUser(const std::optional<std::string>& name);

/// A bundle, as the filter would see it.
struct PlugIn {
  std::string path;
  /// The lines that it carries out; empty when it is not loaded.
  std::vector<std::string> commands;
  /// Why the filter passes it over; empty when it does not.
  std::string refusal;
  /// What is to be mended, when the refusal is one of trust.
  std::optional<Distrust> distrust;
};

/// A folder that the filter searches.
struct PlugInFolder {
  std::string path;
  bool exists = false;
  std::optional<Distrust> distrust;
};

/// Everything that the filter would load.
struct Installation {
  /// The application that the filter lies in.
  std::string application;
  /// What keeps its list of folders from being used.
  std::optional<Distrust> distrust;
  /// In the order in which the filter searches.
  std::vector<PlugInFolder> folders;
  std::vector<PlugIn> plugIns;
  /// The device model; none when it is not installed.
  std::optional<PlugIn> deviceModel;
};

/// The application beside this program.
/// @throws ToolError when it is not there.
[[nodiscard]] std::string installedApplication();

/// Looks at everything as the filter does. Each bundle is loaded by a process of its own, as the
/// filter's user where this process may become that user.
[[nodiscard]] Installation inspectInstallation(const std::string& application,
                                               const FilterUser& user);

/// The plug-in that carries out a command line, or the first that has a line which begins with it
/// as a word; nullptr when none does.
[[nodiscard]] const PlugIn* plugInFor(const Installation& installation, const std::string& word);

}  // namespace commandfilter::tools
