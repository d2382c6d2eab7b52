#include "DeviceModel.h"

#include <filesystem>
#include <optional>
#include <string>

#include "UsageError.h"
#include "runtime/Bundle.h"

namespace commandfilter::tools {

ADMCoreFactory loadDeviceModel() {
  if (const std::optional<ADMCoreFactory> loaded = ADMCoreFactory::find()) return *loaded;
  // The kernel gives a path without links.
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  const std::string path = (program.parent_path().parent_path() /
                            "lib/commandfilter/CommandFilter.app/Contents/Frameworks/"
                            "VemoDeviceModel.bundle")
                               .string();
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(path);
  if (!bundle) throw UsageError("the device model is not installed: " + path + " is missing");
  if (!bundle->load()) throw UsageError("device model " + path + ": " + bundle->loadFailure());
  const std::optional<ADMCoreFactory> core = ADMCoreFactory::find();
  if (!core) throw UsageError("device model " + path + ": it has no class ADMCoreFactory");
  return *core;
}

}  // namespace commandfilter::tools
