#include "template/status/ADMDMFDeviceStatusServiceFactory.h"

#include <array>

#include "runtime/device_model/ADMDeviceStatus.h"
#include "template/status/FrameworkStatus.h"

namespace commandfilter {

namespace {

constexpr std::array kFactoryMethods{
    classMethod<&ADMDMFDeviceStatusServiceFactory::statusServiceForDMFServiceInfo>(
        "statusServiceForDMFServiceInfo:"),
};

}  // namespace

constinit const Class ADMDMFDeviceStatusServiceFactory::kClass{
    .name = "ADMDMFDeviceStatusServiceFactory",
    .base = &Object::kClass,
    .classMethods = kFactoryMethods};

Value ADMDMFDeviceStatusServiceFactory::statusServiceForDMFServiceInfo(const Value& serviceInfo) {
  return frameworkStatus(ADMDeviceStatus::kProtocol, serviceInfo);
}

}  // namespace commandfilter
