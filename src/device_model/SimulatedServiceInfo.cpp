#include "device_model/SimulatedServiceInfo.h"

#include <array>
#include <limits>
#include <span>

#include "device_model/DescribedServiceFactories.h"
#include "device_model/DeviceDescription.h"
#include "device_model/ModelInfo.h"
#include "device_model/SimulatedStatusService.h"
#include "runtime/Cast.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMSuppliesStatus.h"

namespace commandfilter {

namespace {

constexpr std::array kOwnMethods{
    method<&SimulatedServiceInfo::deviceDescription>("deviceDescription")};

}  // namespace

constinit const Class SimulatedServiceInfo::kClass{
    .name = "VemoSimulatedServiceInfo", .base = &DeviceServiceInfo::kClass, .methods = kOwnMethods};

Value SimulatedServiceInfo::deviceDescription() { return Value::sharing(&description()); }

Ref<SimulatedServiceInfo> SimulatedServiceInfo::create(const String& uri) {
  return make<SimulatedServiceInfo>(String::create(uri.text()));
}

const Dictionary& SimulatedServiceInfo::description() {
  if (!description_) {
    Result<std::string> path = pathOfSimulatedURI(uri_->view());
    if (!path) {
      failure_ = uri_->text() + ' ' + path.reason();
      description_ = Dictionary::create();
    } else if (Result<Ref<Dictionary>> read = readDeviceDescription(*path)) {
      description_ = *read;
      if (const auto* services = castTo<Dictionary>((*read)->objectForKey("StatusServices"))) {
        DescribedServiceFactories::provideFor(*services);
      }
    } else {
      failure_ = read.reason();
      description_ = Dictionary::create();
    }
  }
  return *description_;
}

DeviceServiceInfo::Resolution SimulatedServiceInfo::resolution() {
  const Dictionary& described = description();
  Resolution result;
  if (!failure_.empty()) {
    result.state = 0;
    result.failure = failure_;
    return result;
  }
  const Value& state = described.objectForKey("ServiceState");
  if (state.isNumber()) result.state = state.number().intValue();
  const auto* script = castTo<Dictionary>(described.objectForKey("Resolution"));
  if (script == nullptr) return result;
  const Value& delay = script->objectForKey("Delay");
  if (delay.isNumber()) result.delay = delay.number().doubleValue();
  const std::string_view outcome = textOf(castTo<String>(script->objectForKey("Outcome")));
  if (outcome == "fail") {
    result.state = 0;
    result.failure = "the description of the device says that it does not resolve";
  } else if (outcome == "never") {
    result.delay = std::numeric_limits<double>::infinity();
  }
  return result;
}

RefPtr<String> SimulatedServiceInfo::text(std::string_view key) {
  return RefPtr<String>(castTo<String>(description().objectForKey(key)));
}

RefPtr<String> SimulatedServiceInfo::uri() {
  RefPtr<String> described = text("URI");
  return described ? described : RefPtr<String>(uri_);
}

RefPtr<Dictionary> SimulatedServiceInfo::connectionParams() {
  return RefPtr<Dictionary>(castTo<Dictionary>(description().objectForKey("ConnectionParams")));
}

RefPtr<ADMModelInfo> SimulatedServiceInfo::modelInfo() {
  const RefPtr<String> model = modelName();
  const std::array names{textOf(model.get())};
  return ModelInfo::create(names, castTo<Dictionary>(description().objectForKey("ModelInfo")));
}

Value SimulatedServiceInfo::serviceNamed(std::string_view name, const Protocol* protocol) {
  if (serviceState() != kServiceStateResolved) return {};
  const auto* services = castTo<Dictionary>(description().objectForKey("StatusServices"));
  if (services == nullptr) return {};
  const auto* service = castTo<Dictionary>(services->objectForKey(name));
  if (service == nullptr) return {};
  return SimulatedStatusService::create(*service, protocol);
}

Value SimulatedServiceInfo::statusService(const Protocol& protocol) {
  if (protocol.name == ADMDeviceStatus::kProtocol.name) {
    return serviceNamed("DMFDeviceStatus", &protocol);
  }
  if (protocol.name == ADMSuppliesStatus::kProtocol.name) {
    return serviceNamed("DMFSuppliesStatus", &protocol);
  }
  return {};
}

Value SimulatedServiceInfo::capabilitiesProvider() {
  return serviceNamed("CapabilitiesInfoProvider");
}

}  // namespace commandfilter
