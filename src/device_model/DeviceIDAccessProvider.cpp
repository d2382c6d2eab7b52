#include "device_model/DeviceIDAccessProvider.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<DeviceIDAccessProvider, ADMDeviceIDAccessProvider>();

}  // namespace

constinit const Class DeviceIDAccessProvider::kClass{
    .name = "VemoDeviceIDAccessProvider", .base = &Object::kClass, .protocols = kProtocols};

}  // namespace commandfilter
