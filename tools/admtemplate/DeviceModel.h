// The device-model framework, as the tool finds it.
#pragma once

#include "runtime/device_model/ADMCoreFactory.h"

namespace commandfilter::tools {

/// Loads the framework, which is installed beside the filter, below the prefix that the tool is
/// installed in. The second call finds it loaded.
/// @throws UsageError when it is not there, or cannot be loaded.
[[nodiscard]] ADMCoreFactory loadDeviceModel();

}  // namespace commandfilter::tools
