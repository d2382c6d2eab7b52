#include "filter/ACommandFilterPlugInManager.h"

#include <iterator>
#include <utility>

#include "filter/protocols/ICommandFilterExecutor.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/File.h"
#include "runtime/Text.h"
#include "runtime/Trust.h"

namespace commandfilter {

namespace {

// The plug-ins of a folder; none when others could have put them there.
std::vector<std::string> trustedPlugins(const std::string& folder) {
  if (distrustOf(folder)) return {};
  return ACommandFilterPlugInManager::pluginsInFolder(folder).value_or(std::vector<std::string>());
}

// True when others could have written the property list of the program's own bundle.
bool isInformationDistrusted(const Bundle& program) {
  const std::string& path = program.bundlePath();
  return distrustOf(path + "/Contents/Info.plist") || distrustOf(path + "/Contents") ||
         distrustOf(path);
}

}  // namespace

constinit const Class ACommandFilterPlugInManager::kClass{.name = "ACommandFilterPlugInManager",
                                                          .base = &Object::kClass};

Ref<ACommandFilterPlugInManager> ACommandFilterPlugInManager::plugInManager() {
  return plugInManagerForBundle(Bundle::mainBundle());
}

Ref<ACommandFilterPlugInManager> ACommandFilterPlugInManager::plugInManagerForBundle(
    Ref<Bundle> bundle) {
  return make<ACommandFilterPlugInManager>(std::move(bundle));
}

const Class* ACommandFilterPlugInManager::executorClassForCommand(const String& command) {
  const std::string key = lowercase(command.view());
  while (true) {
    if (const Class* executor = cachedExecutorForCommand(key)) return executor;
    const std::string* path = nextPluginPath();
    if (path == nullptr) return nullptr;
    cacheExecutorsForPlugin(*path);
  }
}

const Class* ACommandFilterPlugInManager::cachedExecutorForCommand(
    const std::string& command) const {
  const auto found = executorsCache_.find(command);
  return found != executorsCache_.end() ? found->second : nullptr;
}

void ACommandFilterPlugInManager::cacheExecutorsForPlugin(const std::string& path) {
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(path);
  if (!bundle) return;
  const Class* executor = bundle->principalClass();
  if (executor == nullptr || !executor->conformsToProtocol(ICommandFilterExecutor::kProtocol)) {
    bundle->unload();
    return;
  }
  const auto* commands = castTo<Array>(bundle->infoDictionary().objectForKey("SupportedCommands"));
  if (commands == nullptr) return;
  for (const Value& entry : *commands) {
    if (const auto* command = castTo<String>(entry)) {
      executorsCache_.try_emplace(lowercase(command->view()), executor);
    }
  }
}

std::vector<std::string> ACommandFilterPlugInManager::externalPlugins() {
  std::vector<std::string> paths;
  if (isInformationDistrusted(*bundle_)) return paths;
  const auto* folders = castTo<Array>(bundle_->infoDictionary().objectForKey("PlugInLocations"));
  if (folders == nullptr) return paths;
  for (const Value& entry : *folders) {
    const auto* folder = castTo<String>(entry);
    if (folder == nullptr) continue;
    std::vector<std::string> found = trustedPlugins(folder->text());
    std::move(found.begin(), found.end(), std::back_inserter(paths));
  }
  return paths;
}

std::vector<std::string> ACommandFilterPlugInManager::internalPlugins() {
  return trustedPlugins(bundle_->builtInPlugInsPath());
}

std::optional<std::vector<std::string>> ACommandFilterPlugInManager::pluginsInFolder(
    const std::string& folder) {
  if (!isFolder(folder)) return std::nullopt;
  return entriesOfFolder(folder);
}

const std::string* ACommandFilterPlugInManager::nextPluginPath() {
  if (!pluginPaths_) {
    pluginPaths_ = externalPlugins();
    std::vector<std::string> builtIn = internalPlugins();
    std::move(builtIn.begin(), builtIn.end(), std::back_inserter(*pluginPaths_));
  }
  return visited_ < pluginPaths_->size() ? &(*pluginPaths_)[visited_++] : nullptr;
}

}  // namespace commandfilter
