#include "Setting.h"

#include <utility>

#include "InputFile.h"
#include "NoDevice.h"
#include "PlugIns.h"
#include "template/status/ADMDMFStatusServiceCreator.h"

namespace commandfilter::tools {

namespace {

Ref<ADMStatusServiceCreator> servicesOf(const std::optional<Device>& device) {
  if (!device) return NoDevice::create();
  const RefPtr<ADMDMFStatusServiceCreator> creator =
      ADMDMFStatusServiceCreator::initWithDMFServiceInfo(device->serviceInfo());
  return Ref<ADMStatusServiceCreator>(*creator);
}

}  // namespace

Setting loadSetting(const SettingArguments& arguments) {
  RefPtr<Dictionary> configuration;
  if (arguments.configurationTemplate) {
    configuration = readDictionary(*arguments.configurationTemplate, "template");
  }
  RefPtr<Dictionary> input;
  if (arguments.input) input = readDictionary(*arguments.input, "input");
  for (const std::string& plugIn : arguments.plugIns) loadPlugIn(plugIn);
  std::optional<Device> device;
  if (arguments.device) device.emplace(Device::open(*arguments.device));
  Ref<ADMStatusServiceCreator> services = servicesOf(device);
  return {std::move(device), {std::move(configuration), std::move(input), std::move(services)}};
}

}  // namespace commandfilter::tools
