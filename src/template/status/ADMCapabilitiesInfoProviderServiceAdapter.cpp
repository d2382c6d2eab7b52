#include "template/status/ADMCapabilitiesInfoProviderServiceAdapter.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "runtime/Cast.h"
#include "runtime/Send.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMCapabilitiesInfoProvider.h"

namespace commandfilter {

namespace {

using Adapter = ADMCapabilitiesInfoProviderServiceAdapter;

constexpr std::array<std::string_view, 2> kSupportedFeatures{"suppliesPlatformCode",
                                                             "supportedSupplies"};

constexpr std::array kAdapterMethods{
    method<&Adapter::capabilitiesProvider>("capabilitiesProvider"),
    method<&Adapter::isSupportedFeature>("isSupportedFeature:"),
    method<&Adapter::valueForFeature>("valueForFeature:"),
};

}  // namespace

constinit const Class Adapter::kClass{.name = "ADMCapabilitiesInfoProviderServiceAdapter",
                                      .base = &Object::kClass,
                                      .methods = kAdapterMethods};

Ref<Adapter> Adapter::initWithServiceInfo(const Value& serviceInfo) {
  return make<Adapter>(serviceInfo.isNil()
                           ? Value()
                           : ADMCapabilitiesInfoProvider::initWithServiceInfo(serviceInfo));
}

bool Adapter::isSupportedFeature(const Value& feature) const {
  const auto* name = castTo<String>(feature);
  return name != nullptr &&
         std::ranges::find(kSupportedFeatures, name->view()) != kSupportedFeatures.end();
}

Value Adapter::valueForFeature(const Value& feature) const {
  const auto* name = castTo<String>(feature);
  if (name == nullptr) return {};
  const std::optional<Selector> selector = Selector::fromString(name->view());
  if (!selector || !commandfilter::respondsToSelector(capabilitiesProvider_, *selector)) return {};
  return performSelector(capabilitiesProvider_, *selector);
}

}  // namespace commandfilter
