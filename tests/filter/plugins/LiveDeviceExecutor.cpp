// Brings a device-model framework along that drives the filter's own device, and no other.
#include <array>
#include <utility>

#include "doubles/DeviceModelDouble.h"
#include "plugins/TestExecutor.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "runtime/Module.h"
#include "runtime/RunLoop.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"
#include "runtime/device_model/ADMIOProvider.h"
#include "runtime/device_model/ADMServiceInfo.h"
#include "runtime/device_model/IDMDevice.h"

namespace commandfilter::testing {

namespace {

// Resolved when the device is reachable.
class LiveServiceInfo final : public Implements<Object, ADMServiceInfo> {
 public:
  static const Class kClass;

  explicit LiveServiceInfo(Ref<IDMDevice> device) : device_(std::move(device)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] IDMDevice& device() const noexcept { return *device_; }

  void setDelegate(ADMServiceInfoDelegate* delegate) override { delegate_ = delegate; }
  void scheduleInRunLoop_forMode(RunLoop& runLoop, const String& mode) override {
    Result<RunLoopSource> source = runLoop.addTimer(0, mode, [this] { resolve(); });
    if (!source) throw Exception(source.reason());
    source_ = std::move(*source);
  }
  void removeFromRunLoop_forMode(RunLoop& /*runLoop*/, const String& /*mode*/) override {
    source_.remove();
  }
  void resolveWithTimeout(double /*seconds*/) override {}

  std::int32_t serviceState() override { return state_; }
  RefPtr<String> uri() override { return nullptr; }
  RefPtr<String> connectionType() override { return nullptr; }
  RefPtr<String> vendorName() override { return nullptr; }
  RefPtr<String> modelName() override { return nullptr; }
  RefPtr<Dictionary> connectionParams() override { return nullptr; }
  RefPtr<ADMModelInfo> modelInfo() override { return nullptr; }

 private:
  void resolve() {
    if (device_->isReachable()) state_ = kServiceStateResolved;
    delegate_->serviceInfoDidResolve(*this);
  }

  Ref<IDMDevice> device_;
  ADMServiceInfoDelegate* delegate_ = nullptr;
  RunLoopSource source_;
  std::int32_t state_ = 0;
};

constexpr auto kServiceInfoProtocols = conformances<LiveServiceInfo, ADMServiceInfo>();
constinit const Class LiveServiceInfo::kClass{
    .name = "LiveServiceInfo", .base = &Object::kClass, .protocols = kServiceInfoProtocols};

// Both the factory and what it makes.
class LiveAccess final
    : public Implements<Object, ADMDeviceIDServiceFactory, ADMDeviceIDAccessProvider> {
 public:
  static const Class kClass;

  explicit LiveAccess(RefPtr<IDMDevice> device = nullptr) : device_(std::move(device)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  RefPtr<ADMDeviceIDAccessProvider> deviceIDAccessProviderForServiceInfo(
      const Value& serviceInfo) override {
    const auto* info = castTo<LiveServiceInfo>(serviceInfo);
    if (info == nullptr) return nullptr;
    return make<LiveAccess>(RefPtr<IDMDevice>(&info->device()));
  }
  RefPtr<String> deviceID() override { return device_->newRetrievedDeviceIDWithTimeout(1); }

 private:
  RefPtr<IDMDevice> device_;
};

constexpr auto kAccessProtocols =
    conformances<LiveAccess, ADMDeviceIDServiceFactory, ADMDeviceIDAccessProvider>();
constinit const Class LiveAccess::kClass{
    .name = "LiveAccess", .base = &Object::kClass, .protocols = kAccessProtocols};

RefPtr<LiveServiceInfo> newServiceInfoWithURI_ioProvider(const String* /*uri*/,
                                                         ADMIOProvider* ioProvider) {
  const Class* implementor =
      ioProvider->implementorClassForProtocolWithName(String::create("IDMDevice").get());
  if (implementor == nullptr) return nullptr;
  const RefPtr<IDMDevice> device =
      IDMDevice::initFromInfo_withHandler(*implementor, *Dictionary::create(), Value());
  if (!device) return nullptr;
  return make<LiveServiceInfo>(Ref<IDMDevice>(*device));
}

Ref<LiveAccess> newDeviceIDServiceFactory() { return make<LiveAccess>(); }

constexpr std::array kCoreFactoryMethods{
    classMethod<&newServiceInfoWithURI_ioProvider>("newServiceInfoWithURI:ioProvider:"),
    classMethod<&newDeviceIDServiceFactory>("newDeviceIDServiceFactory")};
constinit const Class kCoreFactory{
    .name = "ADMCoreFactory", .base = &Object::kClass, .classMethods = kCoreFactoryMethods};

class LiveDeviceExecutor final : public TestExecutor<LiveDeviceExecutor> {
 public:
  static const Class kClass;
  explicit LiveDeviceExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}
  Value executeCommand(const String& /*command*/) override {
    return String::create("the framework is loaded");
  }
};

constinit const Class LiveDeviceExecutor::kClass =
    executorClass<LiveDeviceExecutor>("LiveDeviceExecutor");

constexpr const Class* kClasses[] = {&LiveDeviceExecutor::kClass, &kCoreFactory,
                                     &DeviceModelDouble::kInterpreterClass};

}  // namespace

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
