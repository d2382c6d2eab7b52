#include "device_model/CoreFactory.h"

#include <array>

#include "device_model/DeviceDescription.h"
#include "device_model/DeviceIDServiceFactory.h"
#include "device_model/LiveServiceInfo.h"
#include "device_model/SimulatedServiceInfo.h"
#include "device_model/StatusFactory.h"

namespace commandfilter {

namespace {

constexpr std::array kClassMethods{
    classMethod<&CoreFactory::newDeviceIDServiceFactory>("newDeviceIDServiceFactory"),
    classMethod<&CoreFactory::newStatusFactory>("newStatusFactory"),
    classMethod<&CoreFactory::newServiceInfoWithURI_ioProvider>(
        "newServiceInfoWithURI:ioProvider:"),
    classMethod<&CoreFactory::newServiceInfoWithURI_deviceClass>(
        "newServiceInfoWithURI:deviceClass:"),
    classMethod<&CoreFactory::forgetAnswers>("forgetAnswers"),
};

}  // namespace

constinit const Class CoreFactory::kClass{
    .name = "ADMCoreFactory", .base = &Object::kClass, .classMethods = kClassMethods};

RefPtr<ADMDeviceIDServiceFactory> CoreFactory::newDeviceIDServiceFactory() {
  return DeviceIDServiceFactory::create();
}

RefPtr<ADMStatusFactory> CoreFactory::newStatusFactory() { return StatusFactory::create(); }

RefPtr<ADMServiceInfo> CoreFactory::newServiceInfoWithURI_ioProvider(const String* uri,
                                                                     ADMIOProvider* ioProvider) {
  if (uri == nullptr) return nullptr;
  if (uri->view().starts_with(kSimulatedScheme)) return SimulatedServiceInfo::create(*uri);
  return LiveServiceInfo::create(*uri, ioProvider, DeviceSources::ofThisJob());
}

RefPtr<ADMServiceInfo> CoreFactory::newServiceInfoWithURI_deviceClass(const String* uri,
                                                                      const String* deviceClass) {
  if (textOf(deviceClass) != kPrinterDeviceClass) return nullptr;
  return newServiceInfoWithURI_ioProvider(uri, nullptr);
}

void CoreFactory::forgetAnswers() {
  const DeviceSources sources = DeviceSources::ofThisJob();
  sources.backend.get().forgetAnswers();
  sources.queue.get().forgetAnswers();
}

}  // namespace commandfilter
