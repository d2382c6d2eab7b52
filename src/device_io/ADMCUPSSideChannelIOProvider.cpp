#include "device_io/ADMCUPSSideChannelIOProvider.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "device_io/ADMCUPSSideChannelDevice.h"
#include "device_io/SystemVersion.h"
#include "device_io/URIScheme.h"
#include "runtime/Bundle.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

constexpr std::string_view kMulticastDNS = "mdns";
constexpr std::string_view kServiceDiscovery = "dnssd";
constexpr std::string_view kNetworkUSB = "riousbprint";
constexpr std::string_view kBluetooth = "bluetooth";
constexpr std::array kSchemes{kMulticastDNS, kServiceDiscovery, kNetworkUSB, kBluetooth};
constexpr std::string_view kNetworkUSBService = "_riousbprint";
constexpr int kLastVersionWithoutBluetooth = 0x1062;

constexpr auto kProviderProtocols = conformances<ADMCUPSSideChannelIOProvider, ADMIOProvider>();

// 0 until it is computed.
constinit int cachedVersion = 0;

}  // namespace

constinit const Class ADMCUPSSideChannelIOProvider::kClass{.name = "ADMCUPSSideChannelIOProvider",
                                                           .base = &Object::kClass,
                                                           .protocols = kProviderProtocols};

Ref<ADMCUPSSideChannelIOProvider> ADMCUPSSideChannelIOProvider::create() {
  return make<ADMCUPSSideChannelIOProvider>();
}

const Class* ADMCUPSSideChannelIOProvider::implementorClassForProtocolWithName(const String* name) {
  return textOf(name) == "IDMDevice" ? &ADMCUPSSideChannelDevice::kClass : nullptr;
}

Ref<Array> ADMCUPSSideChannelIOProvider::supportedSchemes() {
  ValueVector schemes;
  schemes.reserve(kSchemes.size());
  for (const std::string_view scheme : kSchemes) {
    schemes.emplace_back(String::create(std::string(scheme)));
  }
  return Array::create(std::move(schemes));
}

bool ADMCUPSSideChannelIOProvider::supportsURI(const String* uri) {
  const std::optional<std::string_view> scheme = schemeOfURI(textOf(uri));
  if (!scheme || std::ranges::find(kSchemes, *scheme) == kSchemes.end()) return false;
  if (scheme == kMulticastDNS || scheme == kServiceDiscovery) {
    return uri->view().find(kNetworkUSBService) != std::string_view::npos;
  }
  if (scheme == kBluetooth) return systemVersion() > kLastVersionWithoutBluetooth;
  return true;
}

RefPtr<String> ADMCUPSSideChannelIOProvider::systemVersionString() {
  return commandfilter::systemVersionString(*Bundle::mainBundle());
}

int ADMCUPSSideChannelIOProvider::systemVersion() {
  if (cachedVersion == 0) {
    const RefPtr<String> version = systemVersionString();
    cachedVersion = systemVersionNumber(textOf(version.get())).value_or(kDefaultSystemVersion);
  }
  return cachedVersion;
}

void ADMCUPSSideChannelIOProvider::cacheSystemVersion(int version) noexcept {
  cachedVersion = version;
}

}  // namespace commandfilter
