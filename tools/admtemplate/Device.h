// The device that a template is asked about.
#pragma once

#include <string>

#include "runtime/Ref.h"
#include "runtime/device_model/ADMServiceInfo.h"

namespace commandfilter::tools {

/// The resolved device that `device` names: the path of a device description, or a device URI. May
/// wait for the device.
/// @throws UsageError when there is no such file, when the description cannot be used, when the
/// device does not resolve, and when the device model is not installed.
[[nodiscard]] Ref<ADMServiceInfo> openDevice(const std::string& device);

}  // namespace commandfilter::tools
