// The status service "Shop": which part to order for a supply.
#include <runtime/Description.h>
#include <runtime/Object.h>
#include <runtime/Ref.h>
#include <runtime/String.h>

#include <array>
#include <string>

#include "TemplateParts.h"

using namespace commandfilter;

namespace {

class ShopService final : public Object {
 public:
  static const Class kClass;
  const Class& classInfo() const noexcept override { return kClass; }

  // The template sends it as partFor:, with the supply's name. nil when nobody sells it.
  Value partFor(const Value& supply) {
    const std::string name = descriptionOf(supply);
    if (name == "Black") return String::create("Q40-1");
    if (name == "Cyan") return String::create("Q40-2");
    return {};
  }
};

// Makes the service when a template first asks it. It gets the device, which it may ask.
class ShopServiceFactory final : public Object {
 public:
  static Value statusServiceForDMFServiceInfo(const Value& /*device*/) {
    return make<ShopService>();
  }
};

constexpr std::array kMethods{method<&ShopService::partFor>("partFor:")};
constexpr std::array kFactoryMethods{
    classMethod<&ShopServiceFactory::statusServiceForDMFServiceInfo>(
        "statusServiceForDMFServiceInfo:")};

}  // namespace

constinit const Class ShopService::kClass{
    .name = "ShopService", .base = &Object::kClass, .methods = kMethods};
constinit const Class kShopServiceFactory{
    .name = "ADMShopServiceFactory", .base = &Object::kClass, .classMethods = kFactoryMethods};
