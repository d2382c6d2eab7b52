#include "device_model/DeviceIDInterpreter.h"

#include <array>
#include <string>
#include <string_view>

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<DeviceIDInterpreter, ADMDeviceIDInterpreter>();
constexpr std::array kMethods{method<&DeviceIDInterpreter::languages>("languages")};
constexpr std::array kInitializers{
    initializer<&DeviceIDInterpreter::initWithDeviceIDString>("initWithDeviceIDString:")};

}  // namespace

constinit const Class DeviceIDInterpreter::kClass{.name = "ADMDeviceIDInterpreter",
                                                  .base = &Object::kClass,
                                                  .protocols = kProtocols,
                                                  .methods = kMethods,
                                                  .initializers = kInitializers};

RefPtr<DeviceIDInterpreter> DeviceIDInterpreter::initWithDeviceIDString(const String* deviceID) {
  if (deviceID == nullptr) return nullptr;
  return make<DeviceIDInterpreter>(DeviceID(deviceID->text()));
}

RefPtr<Array> DeviceIDInterpreter::languages() {
  ValueVector languages;
  for (const std::string_view language : deviceID_.languages()) {
    languages.emplace_back(String::create(std::string(language)));
  }
  if (languages.empty()) return nullptr;
  return Array::create(std::move(languages));
}

}  // namespace commandfilter
