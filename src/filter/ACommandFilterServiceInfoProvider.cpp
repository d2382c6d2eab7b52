#include "filter/ACommandFilterServiceInfoProvider.h"

#include <optional>
#include <string>

#include "device_io/ADMIOProviderFactory.h"
#include "runtime/RunLoop.h"
#include "runtime/device_model/ADMCoreFactory.h"
#include "runtime/device_model/DeviceModelConstants.h"

namespace commandfilter {

namespace {

// In seconds: what the framework may take, and the longest turn of the wait for it.
constexpr double kResolutionTimeout = 30;
constexpr double kRunLoopSlice = 0.4;

constexpr auto kProviderProtocols =
    conformances<ACommandFilterServiceInfoProvider, ICommandFilterServiceInfoProvider,
                 ADMServiceInfoDelegate>();

// Sources in other modes are not served while the filter waits for the device.
Ref<String> resolutionMode() { return String::create("RESOLVE_MODE"); }

void removeFromCurrentRunLoop(ADMServiceInfo& serviceInfo) {
  serviceInfo.removeFromRunLoop_forMode(*RunLoop::currentRunLoop(), *resolutionMode());
}

// Does not own the delegate either: nothing may call it once the wait is over.
class Delegation {
 public:
  Delegation(ADMServiceInfo& serviceInfo, ADMServiceInfoDelegate& delegate)
      : serviceInfo_(serviceInfo) {
    serviceInfo_.setDelegate(&delegate);
  }
  Delegation(const Delegation&) = delete;
  Delegation& operator=(const Delegation&) = delete;
  ~Delegation() { serviceInfo_.setDelegate(nullptr); }

 private:
  ADMServiceInfo& serviceInfo_;
};

}  // namespace

constinit const Class ACommandFilterServiceInfoProvider::kClass{
    .name = "ACommandFilterServiceInfoProvider",
    .base = &Object::kClass,
    .protocols = kProviderProtocols};

RefPtr<ACommandFilterServiceInfoProvider> ACommandFilterServiceInfoProvider::initWithPrinterURI(
    const RefPtr<String>& printerURI) {
  if (!printerURI) return nullptr;
  return make<ACommandFilterServiceInfoProvider>(Ref<String>(*printerURI));
}

RefPtr<ADMServiceInfo> ACommandFilterServiceInfoProvider::newServiceInfo() const {
  const RefPtr<ADMIOProvider> ioProvider =
      ADMIOProviderFactory::newIOProviderForDeviceURI(printerURI_.get());
  const std::optional<ADMCoreFactory> core = ADMCoreFactory::find();
  if (!core) return nullptr;
  if (ioProvider) return core->newServiceInfoWithURI_ioProvider(*printerURI_, *ioProvider);
  return core->newServiceInfoWithURI_deviceClass(*printerURI_,
                                                 *String::create(std::string(kPrinterDeviceClass)));
}

void ACommandFilterServiceInfoProvider::resolve(ADMServiceInfo& serviceInfo) {
  const Ref<RunLoop> loop = RunLoop::currentRunLoop();
  const Ref<String> mode = resolutionMode();
  const Delegation delegation(serviceInfo, *this);
  try {
    serviceInfo.scheduleInRunLoop_forMode(*loop, *mode);
    serviceInfo.resolveWithTimeout(kResolutionTimeout);
    while (loop->runMode_beforeDate(*mode, RunLoop::dateAfter(kRunLoopSlice))) {
    }
  } catch (...) {
    serviceInfo.removeFromRunLoop_forMode(*loop, *mode);
    throw;
  }
}

Value ACommandFilterServiceInfoProvider::serviceInfo() {
  if (serviceInfo_) return serviceInfo_;
  if (serviceInfoInitialized_) return {};
  serviceInfoInitialized_ = true;
  const RefPtr<ADMServiceInfo> attempt = newServiceInfo();
  if (!attempt) return {};
  resolve(*attempt);
  if (attempt->serviceState() == kServiceStateResolved) serviceInfo_ = attempt;
  return serviceInfo_;
}

void ACommandFilterServiceInfoProvider::serviceInfoDidResolve(ADMServiceInfo& serviceInfo) {
  removeFromCurrentRunLoop(serviceInfo);
}

void ACommandFilterServiceInfoProvider::serviceInfo_didNotResolve(ADMServiceInfo& serviceInfo,
                                                                  const Value& /*error*/) {
  removeFromCurrentRunLoop(serviceInfo);
}

}  // namespace commandfilter
