#include "device_model/DeviceIDServiceFactory.h"

#include "device_model/DeviceIDAccessProvider.h"
#include "runtime/Cast.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<DeviceIDServiceFactory, ADMDeviceIDServiceFactory>();

}  // namespace

constinit const Class DeviceIDServiceFactory::kClass{
    .name = "VemoDeviceIDServiceFactory", .base = &Object::kClass, .protocols = kProtocols};

RefPtr<ADMDeviceIDAccessProvider> DeviceIDServiceFactory::deviceIDAccessProviderForServiceInfo(
    const Value& serviceInfo) {
  auto* device = castTo<DeviceServiceInfo>(serviceInfo);
  if (device == nullptr) return nullptr;
  return DeviceIDAccessProvider::create(*device);
}

}  // namespace commandfilter
