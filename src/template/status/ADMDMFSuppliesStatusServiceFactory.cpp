#include "template/status/ADMDMFSuppliesStatusServiceFactory.h"

#include <array>

#include "runtime/device_model/ADMSuppliesStatus.h"
#include "template/status/FrameworkStatus.h"

namespace commandfilter {

namespace {

constexpr std::array kFactoryMethods{
    classMethod<&ADMDMFSuppliesStatusServiceFactory::statusServiceForDMFServiceInfo>(
        "statusServiceForDMFServiceInfo:"),
};

}  // namespace

constinit const Class ADMDMFSuppliesStatusServiceFactory::kClass{
    .name = "ADMDMFSuppliesStatusServiceFactory",
    .base = &Object::kClass,
    .classMethods = kFactoryMethods};

Value ADMDMFSuppliesStatusServiceFactory::statusServiceForDMFServiceInfo(const Value& serviceInfo) {
  return frameworkStatus(ADMSuppliesStatus::kProtocol, serviceInfo);
}

}  // namespace commandfilter
