// The classes of the module that are found by name.
#pragma once

#include "device_model/CapabilitiesInfoProvider.h"
#include "device_model/CoreFactory.h"
#include "device_model/DeviceIDInterpreter.h"
#include "device_model/ModelInfoManager.h"
#include "runtime/Class.h"

namespace commandfilter {

/// For the module's entry point, and for programs that are linked with the module's code.
inline constexpr const Class* kDeviceModelClasses[] = {
    &CoreFactory::kClass,
    &DeviceIDInterpreter::kClass,
    &ModelInfoManager::kClass,
    &CapabilitiesInfoProvider::kClass,
};

}  // namespace commandfilter
