#include "HelloDeviceService.h"

#include <runtime/Cast.h>
#include <runtime/device_model/ADMCoreFactory.h>

#include <array>
#include <optional>

namespace hello {

RefPtr<HelloDeviceService> HelloDeviceService::initWithServiceInfoProvider(
    ICommandFilterServiceInfoProvider* provider) {
  if (provider == nullptr) return nullptr;
  return make<HelloDeviceService>(*provider);
}

RefPtr<String> HelloDeviceService::modelName() {
  const Value device = provider_->serviceInfo();
  auto* info = castTo<ADMServiceInfo>(device);
  return info != nullptr ? info->modelName() : nullptr;
}

RefPtr<String> HelloDeviceService::deviceID() {
  // The device model is a part of the filter that may be missing.
  const std::optional<ADMCoreFactory> model = ADMCoreFactory::find();
  const auto factory = model ? model->newDeviceIDServiceFactory() : nullptr;
  if (!factory) return nullptr;
  const auto access = factory->deviceIDAccessProviderForServiceInfo(provider_->serviceInfo());
  return access ? access->deviceID() : nullptr;
}

constexpr auto kProtocols = conformances<HelloDeviceService, ICommandFilterService>();
constexpr std::array kInitializers{
    initializer<&HelloDeviceService::initWithServiceInfoProvider>("initWithServiceInfoProvider:")};
constinit const Class HelloDeviceService::kClass{.name = "ACommandFilterHelloDeviceService",
                                                 .base = &Object::kClass,
                                                 .protocols = kProtocols,
                                                 .initializers = kInitializers};

}  // namespace hello
