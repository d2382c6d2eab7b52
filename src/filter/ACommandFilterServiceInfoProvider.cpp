#include "filter/ACommandFilterServiceInfoProvider.h"

namespace commandfilter {

namespace {

constexpr auto kProviderProtocols =
    conformances<ACommandFilterServiceInfoProvider, ICommandFilterServiceInfoProvider>();

}  // namespace

constinit const Class ACommandFilterServiceInfoProvider::kClass{
    .name = "ACommandFilterServiceInfoProvider",
    .base = &Object::kClass,
    .protocols = kProviderProtocols};

RefPtr<ACommandFilterServiceInfoProvider> ACommandFilterServiceInfoProvider::initWithPrinterURI(
    const RefPtr<String>& printerURI) {
  if (!printerURI) return nullptr;
  return make<ACommandFilterServiceInfoProvider>(Ref<String>(*printerURI));
}

}  // namespace commandfilter
