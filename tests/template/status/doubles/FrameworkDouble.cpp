#include "template/status/doubles/FrameworkDouble.h"

#include <cassert>
#include <span>

#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMStatusFactory.h"

namespace commandfilter::testing {

namespace {

FrameworkDouble* theFramework = nullptr;

class StatusFactory final : public Implements<Object, ADMStatusFactory> {
 public:
  static const Class kClass;

  static RefPtr<StatusFactory> newStatusFactory() {
    FrameworkDouble& framework = FrameworkDouble::current();
    framework.calls.emplace_back("newStatusFactory");
    if (!framework.hasStatusFactory) return nullptr;
    return make<StatusFactory>();
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value interfaceForProtocol_serviceInfo(const Protocol& protocol,
                                         const Value& serviceInfo) override {
    FrameworkDouble& framework = FrameworkDouble::current();
    framework.calls.push_back("interfaceForProtocol:serviceInfo: " + std::string(protocol.name));
    framework.serviceInfo = serviceInfo;
    return framework.status;
  }
};

Value initWithServiceInfo(const Value& serviceInfo) {
  FrameworkDouble& framework = FrameworkDouble::current();
  framework.calls.emplace_back("initWithServiceInfo:");
  framework.serviceInfo = serviceInfo;
  return framework.capabilities;
}

constexpr auto kFactoryProtocols = conformances<StatusFactory, ADMStatusFactory>();
constexpr std::array kCoreMethods{
    classMethod<&StatusFactory::newStatusFactory>("newStatusFactory")};
constexpr std::array kCapabilitiesInitializers{
    initializer<&initWithServiceInfo>("initWithServiceInfo:")};

constinit const Class StatusFactory::kClass{
    .name = "StatusFactoryDouble", .base = &Object::kClass, .protocols = kFactoryProtocols};
constinit const Class kCoreFactory{
    .name = "ADMCoreFactory", .base = &Object::kClass, .classMethods = kCoreMethods};
constinit const Class kBareCoreFactory{.name = "ADMCoreFactory", .base = &Object::kClass};
constinit const Class kCapabilities{.name = "ADMCapabilitiesInfoProvider",
                                    .base = &Object::kClass,
                                    .initializers = kCapabilitiesInitializers};

constexpr std::array<const Class*, 2> kAll{&kCoreFactory, &kCapabilities};
constexpr std::array<const Class*, 1> kCoreFactoryOnly{&kBareCoreFactory};

}  // namespace

FrameworkDouble::FrameworkDouble(Parts parts)
    : registration_(ClassRegistry::shared().add(
          parts == Parts::All ? std::span<const Class* const>(kAll)
                              : std::span<const Class* const>(kCoreFactoryOnly))) {
  assert(theFramework == nullptr);
  theFramework = this;
}

FrameworkDouble::~FrameworkDouble() { theFramework = nullptr; }

FrameworkDouble& FrameworkDouble::current() { return *theFramework; }

}  // namespace commandfilter::testing
