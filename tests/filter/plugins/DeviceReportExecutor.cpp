// Reports what is known about the device: its identity, its state and its supplies.
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "filter/protocols/ICommandFilterService.h"
#include "filter/protocols/ICommandFilterServiceInfoProvider.h"
#include "plugins/TestExecutor.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Module.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMCoreFactory.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMServiceInfo.h"
#include "runtime/device_model/ADMSuppliesStatus.h"

namespace commandfilter::testing {

// How the executor comes to the device: only services get the provider.
class DeviceReportService final : public Implements<Object, ICommandFilterService> {
 public:
  static const Class kClass;

  static RefPtr<DeviceReportService> initWithServiceInfoProvider(
      ICommandFilterServiceInfoProvider* provider) {
    if (provider == nullptr) return nullptr;
    return make<DeviceReportService>(Ref<ICommandFilterServiceInfoProvider>(*provider));
  }

  explicit DeviceReportService(Ref<ICommandFilterServiceInfoProvider> provider)
      : provider_(std::move(provider)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Value serviceInfo() { return provider_->serviceInfo(); }

 private:
  Ref<ICommandFilterServiceInfoProvider> provider_;
};

constexpr auto kServiceProtocols = conformances<DeviceReportService, ICommandFilterService>();
constexpr std::array kServiceInitializers{
    initializer<&DeviceReportService::initWithServiceInfoProvider>("initWithServiceInfoProvider:")};
constinit const Class DeviceReportService::kClass{.name = "ACommandFilterDeviceReportService",
                                                  .base = &Object::kClass,
                                                  .protocols = kServiceProtocols,
                                                  .initializers = kServiceInitializers};

class DeviceReportExecutor final : public TestExecutor<DeviceReportExecutor> {
 public:
  static const Class kClass;

  explicit DeviceReportExecutor(ICommandFilterContext& filterContext)
      : TestExecutor(filterContext) {}

  Value executeCommand(const String& command) override {
    const std::optional<ADMCoreFactory> core = ADMCoreFactory::find();
    if (!core) return String::create("no framework");
    const auto service = context().service<DeviceReportService>("DeviceReport");
    const Value serviceInfo = service ? service->serviceInfo() : Value();
    if (serviceInfo.isNil()) return String::create("no device");
    if (command.view().ends_with("identity")) reportIdentity(*core, serviceInfo);
    if (command.view().ends_with("state")) reportState(*core, serviceInfo);
    if (command.view().ends_with("supplies")) reportSupplies(*core, serviceInfo);
    return String::create("end of the report");
  }

 private:
  void report(const char* name, const Value& value) {
    context().reportMessageWithFormat("%s = %@", name, value);
  }
  static Value ask(const Value& status, const char* message, const Value& identifier = {}) {
    return performSelector(status, Selector(message), identifier);
  }

  void reportIdentity(const ADMCoreFactory& core, const Value& serviceInfo) {
    const auto factory = core.newDeviceIDServiceFactory();
    const auto access = factory->deviceIDAccessProviderForServiceInfo(serviceInfo);
    report("device ID", access->deviceID());
    auto* info = castTo<ADMServiceInfo>(serviceInfo);
    report("model", info->modelName());
    report("vendor", info->vendorName());
  }

  void reportState(const ADMCoreFactory& core, const Value& serviceInfo) {
    const Value status = core.newStatusFactory()->interfaceForProtocol_serviceInfo(
        ADMDeviceStatus::kProtocol, serviceInfo);
    report("state", ask(status, "deviceState"));
    const Value reasons = ask(status, "deviceSubstate");
    if (const auto* all = castTo<Array>(reasons)) {
      for (const Value& reason : *all) report("reason", reason);
    }
    report("serial number", ask(status, "deviceSerialNumber"));
    report("name", ask(status, "humanReadableModelName"));
  }

  void reportSupplies(const ADMCoreFactory& core, const Value& serviceInfo) {
    const Value status = core.newStatusFactory()->interfaceForProtocol_serviceInfo(
        ADMSuppliesStatus::kProtocol, serviceInfo);
    const Value identifiers = ask(status, "suppliesIdentifiers");
    const auto* all = castTo<Array>(identifiers);
    if (all == nullptr) return;
    for (const Value& supply : *all) {
      context().reportMessageWithFormat(
          "supply %@ = %@, %@, level %@, %@, %@", supply,
          ask(status, "supplyNameForIdentifier:", supply),
          ask(status, "supplyTypeForIdentifier:", supply),
          ask(status, "supplyLevelForIdentifier:", supply),
          ask(status, "supplyColorNameForIdentifier:", supply),
          ask(status, "supplyRGBRepresentationForIdentifier:", supply));
    }
  }
};

constinit const Class DeviceReportExecutor::kClass =
    executorClass<DeviceReportExecutor>("DeviceReportExecutor");

constexpr const Class* kClasses[] = {&DeviceReportExecutor::kClass, &DeviceReportService::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
