#include "DeviceService.h"

#include "comparison/DatumValue.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"

namespace commandfilter::benchmarks {

namespace {

constexpr auto kProtocols = conformances<DeviceService, ADMFeaturePathSource>();

}  // namespace

constinit const Class DeviceService::kClass{
    .name = "DeviceService", .base = &Object::kClass, .protocols = kProtocols};

Ref<DeviceService> DeviceService::create(const Datum& device) {
  return make<DeviceService>(toValue(device));
}

Value DeviceService::valueForFeaturePathComponents_errorInfo(const Array& components,
                                                             RefPtr<String>& /*errorInfo*/) {
  const Value* value = &features_;
  for (const Value& component : components) {
    const auto* dictionary = castTo<Dictionary>(*value);
    if (dictionary == nullptr) return {};
    value = &dictionary->objectForKey(component);
  }
  return *value;
}

}  // namespace commandfilter::benchmarks
