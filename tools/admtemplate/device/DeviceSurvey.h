// All that the device model knows of a device.
#pragma once

#include <string_view>

#include "runtime/Dictionary.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMServiceInfo.h"

namespace commandfilter::tools {

/// The names of the framework's status services.
inline constexpr std::string_view kDeviceStatusService = "DMFDeviceStatus";
inline constexpr std::string_view kSuppliesStatusService = "DMFSuppliesStatus";
inline constexpr std::string_view kCapabilitiesService = "CapabilitiesInfoProvider";

/// What a device that is described in a file is described as; nil for every other device.
[[nodiscard]] RefPtr<Dictionary> ownDescriptionOf(const Ref<ADMServiceInfo>& device);

/// Asks the device everything; gives its description, in the form of a device description: it
/// answers the same to the same questions. Of a device that is described itself, it is that
/// description.
[[nodiscard]] Ref<Dictionary> surveyDevice(const Ref<ADMServiceInfo>& device);

}  // namespace commandfilter::tools
