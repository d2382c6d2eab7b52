#include "doubles/DeviceModelDouble.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Exception.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMDeviceIDInterpreter.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"

namespace commandfilter::testing {

namespace {

class AccessProvider final : public Implements<Object, ADMDeviceIDAccessProvider> {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  RefPtr<String> deviceID() override {
    DeviceModelDouble& framework = DeviceModelDouble::shared();
    framework.called("deviceID");
    if (!framework.deviceID) return nullptr;
    return String::create(*framework.deviceID);
  }
};

class ServiceFactory final : public Implements<Object, ADMDeviceIDServiceFactory> {
 public:
  static const Class kClass;

  static RefPtr<ServiceFactory> newDeviceIDServiceFactory() {
    DeviceModelDouble::shared().called("newDeviceIDServiceFactory");
    if (!DeviceModelDouble::shared().hasServiceFactory) return nullptr;
    return make<ServiceFactory>();
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  RefPtr<ADMDeviceIDAccessProvider> deviceIDAccessProviderForServiceInfo(
      const Value& serviceInfo) override {
    DeviceModelDouble& framework = DeviceModelDouble::shared();
    framework.called("deviceIDAccessProviderForServiceInfo:");
    framework.serviceInfo = serviceInfo;
    if (!framework.hasAccessProvider) return nullptr;
    return make<AccessProvider>();
  }
};

class Interpreter final : public Implements<Object, ADMDeviceIDInterpreter> {
 public:
  static RefPtr<Interpreter> initWithDeviceIDString(const String* deviceID) {
    DeviceModelDouble& framework = DeviceModelDouble::shared();
    framework.called("initWithDeviceIDString:");
    framework.interpretedID = textOf(deviceID);
    if (!framework.hasInterpreter) return nullptr;
    return make<Interpreter>(framework.interpretedID);
  }

  explicit Interpreter(std::string deviceID) : deviceID_(std::move(deviceID)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override {
    return DeviceModelDouble::kInterpreterClass;
  }

  RefPtr<Array> languages() override {
    DeviceModelDouble::shared().called("languages");
    constexpr std::string_view kKey = "CMD:";
    std::size_t at = deviceID_.find(kKey);
    if (at == std::string::npos) return nullptr;
    std::string_view list = std::string_view(deviceID_).substr(at + kKey.size());
    list = list.substr(0, list.find(';'));
    ValueVector languages;
    while (true) {
      const std::size_t comma = list.find(',');
      languages.emplace_back(String::create(std::string(list.substr(0, comma))));
      if (comma == std::string_view::npos) break;
      list.remove_prefix(comma + 1);
    }
    return Array::create(std::move(languages));
  }

 private:
  std::string deviceID_;
};

constexpr auto kAccessProtocols = conformances<AccessProvider, ADMDeviceIDAccessProvider>();
constexpr auto kFactoryProtocols = conformances<ServiceFactory, ADMDeviceIDServiceFactory>();
constexpr auto kInterpreterProtocols = conformances<Interpreter, ADMDeviceIDInterpreter>();
constexpr std::array kCoreFactoryMethods{
    classMethod<&ServiceFactory::newDeviceIDServiceFactory>("newDeviceIDServiceFactory")};
constexpr std::array kInterpreterInitializers{
    initializer<&Interpreter::initWithDeviceIDString>("initWithDeviceIDString:")};

constinit const Class AccessProvider::kClass{
    .name = "AccessProvider", .base = &Object::kClass, .protocols = kAccessProtocols};
constinit const Class ServiceFactory::kClass{
    .name = "ServiceFactory", .base = &Object::kClass, .protocols = kFactoryProtocols};

}  // namespace

constinit const Class DeviceModelDouble::kCoreFactoryClass{
    .name = "ADMCoreFactory", .base = &Object::kClass, .classMethods = kCoreFactoryMethods};
constinit const Class DeviceModelDouble::kInterpreterClass{
    .name = "ADMDeviceIDInterpreter",
    .base = &Object::kClass,
    .protocols = kInterpreterProtocols,
    .initializers = kInterpreterInitializers};

DeviceModelDouble& DeviceModelDouble::shared() {
  static DeviceModelDouble framework;
  return framework;
}

void DeviceModelDouble::called(const std::string& call) {
  calls.push_back(call);
  if (call == throwingCall) throw Exception(call + " failed");
}

}  // namespace commandfilter::testing
