#include "filter/DeviceModelModule.h"

namespace commandfilter {

std::string loadDeviceModel(const Bundle& program) {
  const RefPtr<Bundle> bundle =
      Bundle::bundleWithPath(program.privateFrameworksPath() + "/VemoDeviceModel.bundle");
  if (!bundle || bundle->load()) return {};
  return bundle->bundlePath() + ": " + bundle->loadFailure();
}

}  // namespace commandfilter
