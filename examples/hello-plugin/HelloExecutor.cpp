// A plug-in for the commands "Hello", "Hello again" and "Report device".
#include <filter/protocols/ICommandFilterExecutor.h>
#include <runtime/Class.h>
#include <runtime/Format.h>
#include <runtime/Module.h>

#include <array>
#include <utility>

#include "HelloDeviceService.h"

using namespace commandfilter;
using hello::HelloDeviceService;

class HelloExecutor final : public Implements<Object, ICommandFilterExecutor> {
 public:
  static const Class kClass;

  // The filter makes one executor for each command; nullptr would refuse the command.
  static RefPtr<HelloExecutor> initWithFilterContext(ICommandFilterContext* context) {
    if (context == nullptr) return nullptr;
    return make<HelloExecutor>(Ref<ICommandFilterContext>(*context));
  }

  explicit HelloExecutor(Ref<ICommandFilterContext> context) : context_(std::move(context)) {}

  const Class& classInfo() const noexcept override { return kClass; }

  // The description of the result becomes one line of the job's log.
  Value executeCommand(const String& command) override {
    if (command.view() == "Report device") return reportDevice();
    context_->reportMessageWithFormat("INFO: Carrying out %@", command);
    return format("Hello from the plug-in: %@", command);
  }

 private:
  Value reportDevice() {
    const auto device = context_->service<HelloDeviceService>("HelloDevice");
    if (!device) return String::create("There is no device");
    return format("The device is a %@, its ID is %@", device->modelName(), device->deviceID());
  }

  Ref<ICommandFilterContext> context_;
};

// What the filter finds by name: the class, its protocol and its initialiser.
constexpr auto kProtocols = conformances<HelloExecutor, ICommandFilterExecutor>();
constexpr std::array kInitializers{
    initializer<&HelloExecutor::initWithFilterContext>("initWithFilterContext:")};
constinit const Class HelloExecutor::kClass{.name = "HelloExecutor",
                                            .base = &Object::kClass,
                                            .protocols = kProtocols,
                                            .initializers = kInitializers};

// What the bundle hands over when it is loaded.
constexpr const Class* kClasses[] = {&HelloExecutor::kClass, &HelloDeviceService::kClass};
extern "C" constinit const Module command_filter_module = moduleOf(kClasses);
