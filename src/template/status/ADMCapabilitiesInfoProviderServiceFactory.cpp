#include "template/status/ADMCapabilitiesInfoProviderServiceFactory.h"

#include <array>

#include "template/status/ADMCapabilitiesInfoProviderServiceAdapter.h"

namespace commandfilter {

namespace {

constexpr std::array kFactoryMethods{
    classMethod<&ADMCapabilitiesInfoProviderServiceFactory::statusServiceForDMFServiceInfo>(
        "statusServiceForDMFServiceInfo:"),
};

}  // namespace

constinit const Class ADMCapabilitiesInfoProviderServiceFactory::kClass{
    .name = "ADMCapabilitiesInfoProviderServiceFactory",
    .base = &Object::kClass,
    .classMethods = kFactoryMethods};

Value ADMCapabilitiesInfoProviderServiceFactory::statusServiceForDMFServiceInfo(
    const Value& serviceInfo) {
  return ADMCapabilitiesInfoProviderServiceAdapter::initWithServiceInfo(serviceInfo);
}

}  // namespace commandfilter
