#include "device_model/CapabilitiesInfoProvider.h"

#include <array>

#include "device_model/DeviceServiceInfo.h"
#include "device_model/ModelInfoManager.h"
#include "runtime/Bundle.h"
#include "runtime/Cast.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

constexpr std::string_view kTable = "Capabilities";

constexpr std::array kInitializers{
    initializer<&CapabilitiesInfoProvider::initWithServiceInfo>("initWithServiceInfo:")};

}  // namespace

constinit const Class CapabilitiesInfoProvider::kClass{
    .name = "ADMCapabilitiesInfoProvider", .base = &Object::kClass, .initializers = kInitializers};

Value CapabilitiesInfoProvider::initWithServiceInfo(const Value& serviceInfo) {
  auto* device = castTo<DeviceServiceInfo>(serviceInfo);
  return device != nullptr ? device->capabilitiesProvider() : Value();
}

Ref<CapabilitiesInfoProvider> CapabilitiesInfoProvider::create(ADMModelInfo& modelInfo) {
  if (!ModelInfoManager::pathOfTable(kTable)) {
    const Ref<String> folder = String::create(Bundle::mainBundle()->resourcePath());
    ModelInfoManager::sharedManager()->registerTable_location(
        String::create(std::string(kTable)).get(), folder.get());
  }
  return make<CapabilitiesInfoProvider>(Ref<ADMModelInfo>(modelInfo));
}

Value CapabilitiesInfoProvider::capability(const Selector& selector) const {
  if (selector.argumentCount() != 0) return {};
  return modelInfo_->valueForInfoPath_inTable(String::create(selector.name()).get(),
                                              String::create(std::string(kTable)).get());
}

bool CapabilitiesInfoProvider::respondsToSelector(const Selector& selector) const {
  return static_cast<bool>(methodSignatureForSelector(selector));
}

MethodSignature CapabilitiesInfoProvider::methodSignatureForSelector(
    const Selector& selector) const {
  if (const MethodSignature own = Object::methodSignatureForSelector(selector)) return own;
  return capability(selector).isNil() ? MethodSignature() : MethodSignature("@");
}

void CapabilitiesInfoProvider::forwardInvocation(Invocation& invocation) {
  invocation.setReturnValue(capability(invocation.selector()));
}

}  // namespace commandfilter
