// What the commands of this plug-in want to know about the printer.
#pragma once

#include <filter/protocols/ICommandFilterService.h>
#include <filter/protocols/ICommandFilterServiceInfoProvider.h>
#include <runtime/Class.h>
#include <runtime/Object.h>
#include <runtime/Protocol.h>
#include <runtime/Ref.h>
#include <runtime/String.h>

namespace hello {

using namespace commandfilter;

// Executors get it from their context, as the service "HelloDevice". The filter finds the class by
// its name and gives it what leads to the device.
class HelloDeviceService final : public Implements<Object, ICommandFilterService> {
 public:
  static const Class kClass;

  // nullptr would refuse: there is no such service then.
  static RefPtr<HelloDeviceService> initWithServiceInfoProvider(
      ICommandFilterServiceInfoProvider* provider);

  explicit HelloDeviceService(ICommandFilterServiceInfoProvider& provider) : provider_(provider) {}

  const Class& classInfo() const noexcept override { return kClass; }

  // Both ask the device, and are nil when it does not tell or there is none.
  RefPtr<String> modelName();
  RefPtr<String> deviceID();

 private:
  Ref<ICommandFilterServiceInfoProvider> provider_;
};

}  // namespace hello
