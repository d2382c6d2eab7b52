// Finds the executor class for a command among the plug-in bundles.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "runtime/Bundle.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// Loads plug-ins one at a time and only until the command is known. The first plug-in in search
/// order that declares a command carries it out: the folders under "PlugInLocations" in order,
/// then the built-in folder. Folders and bundles that others than root and the filter's user could
/// have changed are passed over without a word.
class ACommandFilterPlugInManager final : public Object {
 public:
  static const Class kClass;

  /// A new manager for the bundle that the program lies in.
  [[nodiscard]] static Ref<ACommandFilterPlugInManager> plugInManager();
  /// A new manager for another bundle.
  [[nodiscard]] static Ref<ACommandFilterPlugInManager> plugInManagerForBundle(Ref<Bundle> bundle);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The class that carries out the command, matched as a whole line without regard to case;
  /// nullptr when no plug-in declares it. May run code of the plug-ins that it loads.
  [[nodiscard]] const Class* executorClassForCommand(const String& command);

  /// The class known so far for a command in lower case; nullptr when there is none.
  [[nodiscard]] const Class* cachedExecutorForCommand(const std::string& command) const;
  /// Loads the plug-in at the path and notes the commands that it declares and that are not known
  /// yet. A bundle without an executor class is unloaded again.
  void cacheExecutorsForPlugin(const std::string& path);

  /// The paths in the folders under "PlugInLocations" of the manager's bundle; none when others
  /// could have written that list.
  [[nodiscard]] std::vector<std::string> externalPlugins();
  /// The paths in the built-in plug-ins folder of the manager's bundle.
  [[nodiscard]] std::vector<std::string> internalPlugins();
  /// All entries of a folder in the order of the file system; none when it is no folder.
  [[nodiscard]] static std::optional<std::vector<std::string>> pluginsInFolder(
      const std::string& folder);
  /// The bundle that holds the manager.
  [[nodiscard]] const Ref<Bundle>& pluginManagerBundle() const noexcept { return bundle_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ACommandFilterPlugInManager(Ref<Bundle> bundle) : bundle_(std::move(bundle)) {}
  ~ACommandFilterPlugInManager() override = default;

  /// The next path that no lookup has visited; nullptr at the end.
  const std::string* nextPluginPath();

  Ref<Bundle> bundle_;
  std::optional<std::vector<std::string>> pluginPaths_;
  std::size_t visited_ = 0;
  std::unordered_map<std::string, const Class*> executorsCache_;
};

}  // namespace commandfilter
