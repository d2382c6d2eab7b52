#include "language/CreatorDouble.h"

namespace commandfilter::testing {

namespace {

constexpr auto kCreatorProtocols = conformances<CreatorDouble, ADMStatusServiceCreator>();

}  // namespace

constinit const Class CreatorDouble::kClass{
    .name = "CreatorDouble", .base = &Object::kClass, .protocols = kCreatorProtocols};

Value CreatorDouble::statusServiceForName(const String* name) {
  const std::string text(textOf(name));
  const auto known = made_.find(text);
  if (known != made_.end()) return known->second;
  const auto facts = services_.find(text);
  if (facts == services_.end()) return {};
  log_.push_back("new " + text);
  return made_.emplace(text, DeviceDouble::create(*facts->second, log_)).first->second;
}

RefPtr<MutableDictionary> CreatorDouble::userInfoForServiceName(const String* name) {
  return caches_.try_emplace(std::string(textOf(name)), MutableDictionary::create()).first->second;
}

void CreatorDouble::reinitializeServices() {
  made_.clear();
  caches_.clear();
}

}  // namespace commandfilter::testing
