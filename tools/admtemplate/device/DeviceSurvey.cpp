#include "device/DeviceSurvey.h"

#include <string>
#include <vector>

#include "DeviceModel.h"
#include "device/ServiceSurvey.h"
#include "runtime/Cast.h"
#include "runtime/Send.h"
#include "template/status/ADMDMFStatusServiceCreator.h"

namespace commandfilter::tools {

namespace {

void setText(DictionaryBuilder& builder, std::string_view key, const RefPtr<String>& text) {
  if (text) builder.set(key, text);
}

RefPtr<String> deviceIDOf(const Ref<ADMServiceInfo>& device) {
  const RefPtr<ADMDeviceIDServiceFactory> factory = loadDeviceModel().newDeviceIDServiceFactory();
  if (!factory) return nullptr;
  const RefPtr<ADMDeviceIDAccessProvider> provider =
      factory->deviceIDAccessProviderForServiceInfo(device);
  return provider ? provider->deviceID() : nullptr;
}

Ref<Dictionary> servicesOf(const Ref<ADMServiceInfo>& device) {
  const RefPtr<ADMDMFStatusServiceCreator> creator =
      ADMDMFStatusServiceCreator::initWithDMFServiceInfo(device);
  DictionaryBuilder services;
  for (const std::string_view name :
       {kDeviceStatusService, kSuppliesStatusService, kCapabilitiesService}) {
    const Value service = creator->statusServiceForName(String::create(std::string(name)).get());
    if (service.isNil()) continue;
    services.set(
        name, name == kCapabilitiesService ? surveyCapabilities(service) : surveyService(service));
  }
  return services.build();
}

}  // namespace

RefPtr<Dictionary> ownDescriptionOf(const Ref<ADMServiceInfo>& device) {
  static const Selector kDescription("deviceDescription");
  if (!respondsToSelector(device, kDescription)) return nullptr;
  const Value description = send(device, kDescription);
  return RefPtr<Dictionary>(castTo<Dictionary>(description));
}

Ref<Dictionary> surveyDevice(const Ref<ADMServiceInfo>& device) {
  DictionaryBuilder survey;
  if (const RefPtr<Dictionary> described = ownDescriptionOf(device)) {
    for (const DictionaryEntry& entry : *described) survey.set(entry.key, entry.value);
    setText(survey, "URI", device->uri());
    return survey.build();
  }
  // The backend tells the scheduler about the device before it answers for its ID.
  setText(survey, "DeviceID", deviceIDOf(device));
  setText(survey, "URI", device->uri());
  setText(survey, "ConnectionType", device->connectionType());
  setText(survey, "VendorName", device->vendorName());
  setText(survey, "ModelName", device->modelName());
  if (const RefPtr<Dictionary> parameters = device->connectionParams()) {
    survey.set("ConnectionParams", parameters);
  }
  survey.set("StatusServices", servicesOf(device));
  return survey.build();
}

}  // namespace commandfilter::tools
