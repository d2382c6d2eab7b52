// What the commands of this plug-in want to know about the printer.
#pragma once

#include <filter/protocols/ICommandFilterService.h>
#include <filter/protocols/ICommandFilterServiceInfoProvider.h>
#include <runtime/Class.h>
#include <runtime/Object.h>
#include <runtime/Protocol.h>
#include <runtime/Ref.h>
#include <runtime/String.h>

#include <utility>

using namespace commandfilter;

// Executors get it from their context, as the service "HelloDevice". The filter finds the class by
// its name and gives it what leads to the device.
class HelloDeviceService final : public Implements<Object, ICommandFilterService> {
 public:
  static const Class kClass;

  static RefPtr<HelloDeviceService> initWithServiceInfoProvider(
      ICommandFilterServiceInfoProvider* provider) {
    if (provider == nullptr) return nullptr;
    return make<HelloDeviceService>(Ref<ICommandFilterServiceInfoProvider>(*provider));
  }

  explicit HelloDeviceService(Ref<ICommandFilterServiceInfoProvider> provider)
      : provider_(std::move(provider)) {}

  const Class& classInfo() const noexcept override { return kClass; }

  // Both ask the device, and are nil when it does not tell or there is none.
  RefPtr<String> modelName();
  RefPtr<String> deviceID();

 private:
  Ref<ICommandFilterServiceInfoProvider> provider_;
};
