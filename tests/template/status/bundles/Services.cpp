// A factory that makes services for the name "Bundled".
#include <array>
#include <utility>

#include "runtime/Class.h"
#include "runtime/Module.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter::testing {

namespace {

// Knows one feature, and the device that it was made for.
class BundledService final : public Object {
 public:
  static const Class kClass;

  explicit BundledService(Value device) : device_(std::move(device)) {}

  static Value statusServiceForDMFServiceInfo(const Value& device) {
    return make<BundledService>(device);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool isSupportedFeature(const String* feature) { return textOf(feature) == "Greeting"; }
  Value valueForFeature(const Value& /*feature*/) { return String::create("hello"); }
  Value device() { return device_; }

 private:
  Value device_;
};

constexpr std::array kServiceMethods{
    method<&BundledService::isSupportedFeature>("isSupportedFeature:"),
    method<&BundledService::valueForFeature>("valueForFeature:"),
    method<&BundledService::device>("device"),
};
constexpr std::array kFactoryMethods{
    classMethod<&BundledService::statusServiceForDMFServiceInfo>("statusServiceForDMFServiceInfo:"),
};

constinit const Class BundledService::kClass{
    .name = "BundledService", .base = &Object::kClass, .methods = kServiceMethods};
constinit const Class kFactory{
    .name = "ADMBundledServiceFactory", .base = &Object::kClass, .classMethods = kFactoryMethods};

constexpr const Class* kClasses[] = {&kFactory, &BundledService::kClass};

}  // namespace

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
