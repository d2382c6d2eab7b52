// What the module hands over when it is loaded.
#include "runtime/Module.h"

#include "device_model/DeviceModelClasses.h"

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::kDeviceModelClasses);
