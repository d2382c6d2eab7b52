#include "template/ServiceInfoDouble.h"

#include <array>

#include "runtime/Exception.h"
#include "runtime/device_model/ADMModelInfoManager.h"

namespace commandfilter::testing {

namespace {

FrameworkDouble* current = nullptr;

class TestService final : public Object {
 public:
  static const Class kClass;

  static Value statusServiceForDMFServiceInfo(const Value& /*serviceInfo*/) {
    ++current->servicesMade;
    return make<TestService>();
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Value state() const {
    current->calls.emplace_back("state");
    return String::create("ready");
  }
  [[nodiscard]] Value jam() const { throw Exception("the device is jammed"); }
  [[nodiscard]] Value explode() const { throw 5; }  // NOLINT(hicpp-exception-baseclass)
};

class ModelInfoDouble final : public Implements<Object, ADMModelInfo> {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value valueForInfoPath_inTable(const String* infoPath, const String* table) override {
    current->calls.push_back("value for " + std::string(textOf(infoPath)) + " in " +
                             std::string(textOf(table)));
    const auto found = current->modelInfo.find(std::string(textOf(infoPath)));
    return found != current->modelInfo.end() ? found->second : Value();
  }
};

class ManagerDouble final : public Implements<Object, ADMModelInfoManager> {
 public:
  static const Class kClass;

  static RefPtr<ManagerDouble> sharedManager() {
    current->calls.emplace_back("shared manager");
    return make<ManagerDouble>();
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool registerTable_location(const String* table, const String* location) override {
    current->calls.push_back("register " + std::string(textOf(table)) + " at " +
                             std::string(textOf(location)));
    return current->registers;
  }
};

constexpr std::array kServiceMethods{method<&TestService::state>("state"),
                                     method<&TestService::jam>("jam"),
                                     method<&TestService::explode>("explode")};
constexpr std::array kFactoryMethods{
    classMethod<&TestService::statusServiceForDMFServiceInfo>("statusServiceForDMFServiceInfo:")};
constexpr std::array kManagerMethods{classMethod<&ManagerDouble::sharedManager>("sharedManager")};
constexpr auto kManagerProtocols = conformances<ManagerDouble, ADMModelInfoManager>();
constexpr auto kModelProtocols = conformances<ModelInfoDouble, ADMModelInfo>();
constexpr auto kInfoProtocols = conformances<ServiceInfoDouble, ADMServiceInfo>();
constexpr std::array<const MethodGroup*, 1> kInfoGroups{&ADMServiceInfo::kMethods};
constexpr auto kProviderProtocols =
    conformances<ProviderDouble, ICommandFilterServiceInfoProvider>();

constinit const Class TestService::kClass{
    .name = "TestService", .base = &Object::kClass, .methods = kServiceMethods};
constinit const Class ModelInfoDouble::kClass{
    .name = "ModelInfoDouble", .base = &Object::kClass, .protocols = kModelProtocols};
constinit const Class ManagerDouble::kClass{.name = "ADMModelInfoManager",
                                            .base = &Object::kClass,
                                            .protocols = kManagerProtocols,
                                            .classMethods = kManagerMethods};
constinit const Class kCoreFactory{.name = "ADMCoreFactory", .base = &Object::kClass};
constinit const Class kServiceFactory{
    .name = "ADMTestServiceFactory", .base = &Object::kClass, .classMethods = kFactoryMethods};
constexpr std::array<const Class*, 3> kClasses{&kCoreFactory, &ManagerDouble::kClass,
                                               &kServiceFactory};

}  // namespace

constinit const Class ServiceInfoDouble::kClass{.name = "ServiceInfoDouble",
                                                .base = &Object::kClass,
                                                .protocols = kInfoProtocols,
                                                .groups = kInfoGroups};
constinit const Class ProviderDouble::kClass{
    .name = "ProviderDouble", .base = &Object::kClass, .protocols = kProviderProtocols};

FrameworkDouble::FrameworkDouble() : registration_(ClassRegistry::shared().add(kClasses)) {
  current = this;
}

FrameworkDouble::~FrameworkDouble() { current = nullptr; }

RefPtr<ADMModelInfo> ServiceInfoDouble::modelInfo() {
  current->calls.emplace_back("model info");
  return make<ModelInfoDouble>();
}

}  // namespace commandfilter::testing
