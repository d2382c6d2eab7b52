#include "doubles/ResolutionDouble.h"

#include <array>
#include <utility>

#include "runtime/Exception.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMIOProvider.h"

namespace commandfilter::testing {

namespace {

using Outcome = ResolutionDouble::Outcome;

class ServiceInfo final : public Implements<Object, ADMServiceInfo> {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  void setDelegate(ADMServiceInfoDelegate* delegate) override {
    called(delegate != nullptr ? "setDelegate:" : "setDelegate:nil");
    delegate_ = delegate;
    framework().serviceInfo = this;
    framework().delegate = delegate != nullptr ? &delegate->object() : nullptr;
  }
  void scheduleInRunLoop_forMode(RunLoop& runLoop, const String& mode) override {
    called("scheduleInRunLoop:forMode:");
    framework().runLoop = &runLoop;
    framework().mode = mode.text();
    constexpr double kLong = 3600;
    waiting_ = added(runLoop.addTimer(kLong, mode, [] {}));
    if (framework().delay < 0 || framework().outcome == Outcome::NeverEnds) return;
    ending_ = added(runLoop.addTimer(framework().delay, mode, [this] { end(); }));
  }
  void removeFromRunLoop_forMode(RunLoop& runLoop, const String& mode) override {
    called("removeFromRunLoop:forMode:");
    framework().runLoop = &runLoop;
    framework().mode = mode.text();
    waiting_.remove();
    ending_.remove();
  }
  void resolveWithTimeout(double seconds) override {
    called("resolveWithTimeout:");
    framework().timeout = seconds;
    if (framework().delay < 0) end();
  }

  std::int32_t serviceState() override {
    called("serviceState");
    return framework().serviceState;
  }
  RefPtr<String> uri() override { return nullptr; }
  RefPtr<String> connectionType() override { return nullptr; }
  RefPtr<String> vendorName() override { return nullptr; }
  RefPtr<String> modelName() override { return nullptr; }
  RefPtr<Dictionary> connectionParams() override { return nullptr; }
  RefPtr<ADMModelInfo> modelInfo() override { return nullptr; }

 private:
  static ResolutionDouble& framework() { return ResolutionDouble::shared(); }
  static void called(const char* call) { framework().calls.emplace_back(call); }
  static RunLoopSource added(Result<RunLoopSource> source) {
    if (!source) throw Exception(source.reason());
    return std::move(*source);
  }

  void end() {
    switch (framework().outcome) {
      case Outcome::Resolves:
        called("serviceInfoDidResolve:");
        delegate_->serviceInfoDidResolve(*this);
        break;
      case Outcome::Fails:
        called("serviceInfo:didNotResolve:");
        delegate_->serviceInfo_didNotResolve(*this, String::create("the device is asleep"));
        break;
      case Outcome::EndsUntold:
        waiting_.remove();
        break;
      case Outcome::NeverEnds:
        break;
      case Outcome::Throws:
        throw Exception("the framework failed");
    }
  }

  ADMServiceInfoDelegate* delegate_ = nullptr;
  RunLoopSource waiting_;
  RunLoopSource ending_;
};

constexpr auto kServiceInfoProtocols = conformances<ServiceInfo, ADMServiceInfo>();
constinit const Class ServiceInfo::kClass{
    .name = "ServiceInfoDouble", .base = &Object::kClass, .protocols = kServiceInfoProtocols};

RefPtr<ServiceInfo> newServiceInfo(const char* call, const String* uri) {
  ResolutionDouble& framework = ResolutionDouble::shared();
  framework.calls.emplace_back(call);
  framework.uri = textOf(uri);
  if (!framework.makesServiceInfo) return nullptr;
  return make<ServiceInfo>();
}

RefPtr<ServiceInfo> newServiceInfoWithURI_ioProvider(const String* uri, ADMIOProvider* ioProvider) {
  ResolutionDouble& framework = ResolutionDouble::shared();
  framework.ioProvider = ioProvider->object().classInfo().name;
  const Class* implementor =
      ioProvider->implementorClassForProtocolWithName(String::create("IDMDevice").get());
  if (implementor != nullptr) framework.deviceImplementor = implementor->name;
  return newServiceInfo("newServiceInfoWithURI:ioProvider:", uri);
}

RefPtr<ServiceInfo> newServiceInfoWithURI_deviceClass(const String* uri,
                                                      const String* deviceClass) {
  ResolutionDouble::shared().deviceClass = textOf(deviceClass);
  return newServiceInfo("newServiceInfoWithURI:deviceClass:", uri);
}

constexpr std::array kCoreFactoryMethods{
    classMethod<&newServiceInfoWithURI_ioProvider>("newServiceInfoWithURI:ioProvider:"),
    classMethod<&newServiceInfoWithURI_deviceClass>("newServiceInfoWithURI:deviceClass:")};

}  // namespace

constinit const Class ResolutionDouble::kCoreFactoryClass{
    .name = "ADMCoreFactory", .base = &Object::kClass, .classMethods = kCoreFactoryMethods};

ResolutionDouble& ResolutionDouble::shared() {
  static ResolutionDouble framework;
  return framework;
}

}  // namespace commandfilter::testing
