#include "device_model/DescribedServiceFactories.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include "device_model/SimulatedServiceInfo.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Method.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

struct Factory {
  std::string serviceName;
  std::string className;
  Class info;
  const Class* list = nullptr;
  ClassRegistry::Registration registration;
};
using Factories = std::array<Factory, DescribedServiceFactories::kMost>;

Factories& factories() {
  static Factories all;
  return all;
}

// A class method is not told which class it was sent to, so each class has a function of its own.
template <std::size_t Index>
Value statusServiceForDMFServiceInfo(const Value& serviceInfo) {
  auto* device = castTo<SimulatedServiceInfo>(serviceInfo);
  return device != nullptr ? device->serviceNamed(factories()[Index].serviceName) : Value();
}

template <std::size_t... Index>
constexpr auto methodsOf(std::index_sequence<Index...> /*unused*/) {
  return std::array<Method, sizeof...(Index)>{
      classMethod<&statusServiceForDMFServiceInfo<Index>>("statusServiceForDMFServiceInfo:")...};
}
constexpr auto kMethods = methodsOf(std::make_index_sequence<DescribedServiceFactories::kMost>());

}  // namespace

void DescribedServiceFactories::provideFor(const Dictionary& services) {
  static std::size_t used = 0;
  for (const DictionaryEntry& entry : services) {
    const std::string_view name = textOf(castTo<String>(entry.key));
    // The framework's own services are made by classes of whoever asks for them.
    if (name.empty() || name == "DMFDeviceStatus" || name == "DMFSuppliesStatus" ||
        name == "CapabilitiesInfoProvider") {
      continue;
    }
    std::string className = "ADM" + std::string(name) + "ServiceFactory";
    if (classNamed(className) != nullptr) continue;
    if (used == kMethods.size()) return;
    Factory& factory = factories()[used];
    factory.serviceName = name;
    factory.className = std::move(className);
    factory.info.name = factory.className;
    factory.info.base = &Object::kClass;
    factory.info.classMethods = std::span(&kMethods[used], 1);
    factory.list = &factory.info;
    factory.registration = ClassRegistry::shared().add(std::span(&factory.list, 1));
    ++used;
  }
}

}  // namespace commandfilter
