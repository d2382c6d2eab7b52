#include "template/status/StatusServiceClasses.h"

#include <array>

#include "template/status/ADMCapabilitiesInfoProviderServiceFactory.h"
#include "template/status/ADMDMFDeviceStatusServiceFactory.h"
#include "template/status/ADMDMFSuppliesStatusServiceFactory.h"

namespace commandfilter {

std::span<const Class* const> statusServiceClasses() noexcept {
  static constexpr std::array<const Class*, 3> kClasses{
      &ADMDMFDeviceStatusServiceFactory::kClass,
      &ADMDMFSuppliesStatusServiceFactory::kClass,
      &ADMCapabilitiesInfoProviderServiceFactory::kClass,
  };
  return kClasses;
}

}  // namespace commandfilter
