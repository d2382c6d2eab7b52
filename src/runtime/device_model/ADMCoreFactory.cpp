#include "runtime/device_model/ADMCoreFactory.h"

#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Send.h"

namespace commandfilter {

std::optional<ADMCoreFactory> ADMCoreFactory::find() {
  const Class* info = classNamed("ADMCoreFactory");
  if (info == nullptr) return std::nullopt;
  return ADMCoreFactory(*info);
}

RefPtr<ADMDeviceIDServiceFactory> ADMCoreFactory::newDeviceIDServiceFactory() const {
  const Value factory = sendToClass(*class_, Selector("newDeviceIDServiceFactory"));
  return RefPtr<ADMDeviceIDServiceFactory>(castTo<ADMDeviceIDServiceFactory>(factory));
}

}  // namespace commandfilter
