#include "device_model/StatusFactory.h"

#include "device_model/DeviceServiceInfo.h"
#include "runtime/Cast.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<StatusFactory, ADMStatusFactory>();

}  // namespace

constinit const Class StatusFactory::kClass{
    .name = "VemoStatusFactory", .base = &Object::kClass, .protocols = kProtocols};

Value StatusFactory::interfaceForProtocol_serviceInfo(const Protocol& protocol,
                                                      const Value& serviceInfo) {
  auto* device = castTo<DeviceServiceInfo>(serviceInfo);
  return device != nullptr ? device->statusService(protocol) : Value();
}

}  // namespace commandfilter
