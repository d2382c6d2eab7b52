#include "filter/DeviceModelModule.h"

#include <optional>

#include "runtime/Trust.h"

namespace commandfilter {

std::string loadDeviceModel(const Bundle& program) {
  const std::string folder = program.privateFrameworksPath();
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(folder + "/VemoDeviceModel.bundle");
  if (!bundle) return {};
  if (const std::optional<Distrust> distrust = distrustOf(folder)) return distrust->description();
  if (bundle->load()) return {};
  return bundle->bundlePath() + ": " + bundle->loadFailure();
}

}  // namespace commandfilter
