// The device-model framework that comes with the filter.
#pragma once

#include <string>

#include "runtime/Bundle.h"

namespace commandfilter {

/// Loads the bundle "VemoDeviceModel" from the bundle's folder for frameworks when it is there, and
/// registers its classes. A filter without it runs all the same.
/// @return why a bundle that is there could not be loaded; empty otherwise.
[[nodiscard]] std::string loadDeviceModel(const Bundle& program);

}  // namespace commandfilter
