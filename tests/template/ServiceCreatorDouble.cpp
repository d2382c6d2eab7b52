#include "template/ServiceCreatorDouble.h"

namespace commandfilter::testing {

namespace {

constexpr auto kProtocols = conformances<ServiceCreatorDouble, ADMStatusServiceCreator>();

}  // namespace

constinit const Class ServiceCreatorDouble::kClass{
    .name = "ServiceCreatorDouble", .base = &Object::kClass, .protocols = kProtocols};

Value ServiceCreatorDouble::statusServiceForName(const String* name) {
  ++asked;
  const auto found = services.find(textOf(name));
  return found != services.end() ? found->second : Value();
}

RefPtr<MutableDictionary> ServiceCreatorDouble::userInfoForServiceName(const String* name) {
  if (name == nullptr) return nullptr;
  return userInfos_.try_emplace(name->text(), MutableDictionary::create()).first->second;
}

void ServiceCreatorDouble::reinitializeServices() {
  ++reinitialized;
  userInfos_.clear();
}

}  // namespace commandfilter::testing
