// Brings a device-model framework along, whose device is described in the environment.
#include <cstdlib>

#include "doubles/DeviceModelDouble.h"
#include "plugins/TestExecutor.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class DeviceModelExecutor final : public TestExecutor<DeviceModelExecutor> {
 public:
  static const Class kClass;

  explicit DeviceModelExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {
    DeviceModelDouble& framework = DeviceModelDouble::shared();
    const char* deviceID = std::getenv("TEST_DEVICE_ID");
    if (deviceID != nullptr) framework.deviceID = deviceID;
    const char* failing = std::getenv("TEST_FAILING_CALL");
    if (failing != nullptr) framework.throwingCall = failing;
  }

  Value executeCommand(const String& /*command*/) override {
    return String::create("the framework is loaded");
  }
};

constinit const Class DeviceModelExecutor::kClass =
    executorClass<DeviceModelExecutor>("DeviceModelExecutor");

constexpr const Class* kClasses[] = {&DeviceModelExecutor::kClass,
                                     &DeviceModelDouble::kCoreFactoryClass,
                                     &DeviceModelDouble::kInterpreterClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
