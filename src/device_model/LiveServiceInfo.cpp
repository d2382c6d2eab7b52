#include "device_model/LiveServiceInfo.h"

#include <array>
#include <memory>
#include <string_view>

#include "device_model/CapabilitiesInfoProvider.h"
#include "device_model/CupsBackendMessages.h"
#include "device_model/CupsQueueFacts.h"
#include "device_model/LiveDeviceStatus.h"
#include "device_model/LiveSuppliesStatus.h"
#include "device_model/ModelInfo.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Text.h"

namespace commandfilter {

namespace {

// The device of an I/O provider has its own schedule and ignores this.
constexpr double kDeviceIDSeconds = 20;

std::string schemeOf(std::string_view uri) { return lowercase(uri.substr(0, uri.find(':'))); }

RefPtr<String> firstText(std::initializer_list<std::string_view> texts) {
  for (const std::string_view text : texts) {
    if (!text.empty()) return String::create(std::string(text));
  }
  return nullptr;
}

// Sets the `name=value` parts of a URI's query.
void setQuery(DictionaryBuilder& params, std::string_view resource) {
  const std::size_t start = resource.find('?');
  if (start == std::string_view::npos) return;
  std::string_view rest = resource.substr(start + 1);
  while (!rest.empty()) {
    const std::string_view part = rest.substr(0, rest.find_first_of("&+"));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    const std::size_t equals = part.find('=');
    if (equals == std::string_view::npos || equals == 0) continue;
    params.set(part.substr(0, equals), String::create(std::string(part.substr(equals + 1))));
  }
}

}  // namespace

constinit const Class LiveServiceInfo::kClass{.name = "VemoLiveServiceInfo",
                                              .base = &DeviceServiceInfo::kClass};

DeviceSources DeviceSources::ofThisJob() {
  static BackendTransport backend(std::make_unique<CupsBackendMessages>());
  static CupsQueueFacts queue;
  return {backend, queue};
}

Ref<LiveServiceInfo> LiveServiceInfo::create(const String& uri, ADMIOProvider* ioProvider,
                                             DeviceSources sources) {
  return make<LiveServiceInfo>(String::create(uri.text()), RefPtr<ADMIOProvider>(ioProvider),
                               sources);
}

DeviceServiceInfo::Resolution LiveServiceInfo::resolution() {
  if (ioProvider_ && device() == nullptr) {
    return {0, 0, "the I/O provider has no device for " + uri_->text()};
  }
  return {};
}

IDMDevice* LiveServiceInfo::device() {
  if (ioProvider_ && !deviceMade_) {
    deviceMade_ = true;
    const Class* implementor =
        ioProvider_->implementorClassForProtocolWithName(String::create("IDMDevice").get());
    if (implementor != nullptr) {
      DictionaryBuilder info;
      info.set("URI", uri_);
      device_ = IDMDevice::initFromInfo_withHandler(*implementor, *info.build(), Value());
    }
  }
  return device_.get();
}

RefPtr<String> LiveServiceInfo::parameter(std::string_view key) {
  if (device() == nullptr) return nullptr;
  if (!parameters_) {
    const Ref<Array> keys = Array::create({String::create(std::string(kModelNameProp)),
                                           String::create(std::string(kVendorNameProp))});
    parameters_ = device_->retrieveParameters_withHandler(*keys, Value());
  }
  auto* text = castTo<String>(parameters_->objectForKey(key));
  return text != nullptr && !text->isEmpty() ? RefPtr<String>(text) : nullptr;
}

RefPtr<String> LiveServiceInfo::readDeviceID() {
  if (ioProvider_) {
    return device() != nullptr ? device_->newRetrievedDeviceIDWithTimeout(kDeviceIDSeconds)
                               : nullptr;
  }
  if (const auto answer = backend().deviceID()) {
    std::string text = DeviceID::textOfBytes(*answer);
    if (!text.empty()) return String::create(std::move(text));
  }
  return firstText({sources_.queue.get().ppdAttribute("1284DeviceID")});
}

RefPtr<String> LiveServiceInfo::deviceID() {
  if (!deviceIDRead_) {
    deviceIDRead_ = true;
    deviceID_ = readDeviceID();
  }
  return deviceID_;
}

bool LiveServiceInfo::isReachable() {
  if (ioProvider_) return deviceID() != nullptr;
  return backend().deviceID().has_value();
}

const DeviceID& LiveServiceInfo::interpretedID() {
  if (!interpretedID_) {
    const RefPtr<String> identifier = deviceID();
    interpretedID_.emplace(std::string(textOf(identifier.get())));
  }
  return *interpretedID_;
}

const QueueAttributes& LiveServiceInfo::queueAttributes() {
  // The backend fills the attributes in when it begins; once it has answered, they are there.
  static_cast<void>(deviceID());
  return sources_.queue.get().attributes();
}

RefPtr<String> LiveServiceInfo::connectionType() {
  const std::string scheme = schemeOf(uri_->view());
  std::string_view type = "Other";
  if (scheme == "dnssd" || scheme == "mdns") {
    type = kRendezvousConnectionType;
  } else if (scheme == "usb") {
    type = "USB";
  } else if (scheme == "bluetooth") {
    type = "Bluetooth";
  } else if (scheme == "socket" || scheme == "lpd" || scheme.starts_with("ipp") ||
             scheme.starts_with("http")) {
    type = "Network";
  }
  return String::create(std::string(type));
}

RefPtr<Dictionary> LiveServiceInfo::connectionParams() {
  if (!connectionParams_) {
    const URIParts parts = sources_.queue.get().partsOfURI(uri_->text());
    DictionaryBuilder params;
    setQuery(params, parts.resource);
    // What the query says of the same name is no fact of the connection. The host of other kinds of
    // connection is a name that means something there only.
    if (!parts.host.empty() && connectionType()->view() == "Network") {
      params.set(kIPAddressParam, String::create(parts.host));
      if (parts.port > 0) params.set("Port", Number::integer(parts.port));
    }
    connectionParams_ = params.build();
  }
  return connectionParams_;
}

std::string LiveServiceInfo::serialNumberInURI() {
  return std::string(textOf(castTo<String>(connectionParams()->objectForKey("serial"))));
}

RefPtr<String> LiveServiceInfo::modelName() {
  if (RefPtr<String> name = parameter(kModelNameProp)) return name;
  if (RefPtr<String> name = firstText({interpretedID().model()})) return name;
  return firstText({sources_.queue.get().ppdAttribute("ModelName")});
}

RefPtr<String> LiveServiceInfo::vendorName() {
  if (RefPtr<String> name = parameter(kVendorNameProp)) return name;
  if (RefPtr<String> name = firstText({interpretedID().manufacturer()})) return name;
  return firstText({sources_.queue.get().ppdAttribute("Manufacturer")});
}

RefPtr<ADMModelInfo> LiveServiceInfo::modelInfo() {
  if (!modelInfo_) {
    const RefPtr<String> model = modelName();
    const std::array names{textOf(model.get())};
    modelInfo_ = ModelInfo::create(names);
  }
  return modelInfo_;
}

Value LiveServiceInfo::statusService(const Protocol& protocol) {
  if (serviceState() != kServiceStateResolved) return {};
  if (protocol.name == ADMDeviceStatus::kProtocol.name) return LiveDeviceStatus::create(*this);
  if (protocol.name == ADMSuppliesStatus::kProtocol.name) return LiveSuppliesStatus::create(*this);
  return {};
}

Value LiveServiceInfo::capabilitiesProvider() {
  return CapabilitiesInfoProvider::create(*modelInfo());
}

}  // namespace commandfilter
