#include "device_io/ADMIOProviderFactory.h"

#include <array>

#include "device_io/ADMCUPSSideChannelIOProvider.h"

namespace commandfilter {

namespace {

constexpr std::array kFactoryMethods{
    classMethod<&ADMIOProviderFactory::newIOProviderForDeviceURI>("newIOProviderForDeviceURI:")};

}  // namespace

constinit const Class ADMIOProviderFactory::kClass{
    .name = "ADMIOProviderFactory", .base = &Object::kClass, .classMethods = kFactoryMethods};

RefPtr<ADMIOProvider> ADMIOProviderFactory::newIOProviderForDeviceURI(const String* uri) {
  if (!ADMCUPSSideChannelIOProvider::supportsURI(uri)) return nullptr;
  return ADMCUPSSideChannelIOProvider::create();
}

}  // namespace commandfilter
