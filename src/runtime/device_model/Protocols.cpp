// The framework's protocols as data, and the classes that are made by name.
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMDeviceIDInterpreter.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"

namespace commandfilter {

constinit const Protocol ADMDeviceIDAccessProvider::kProtocol{"ADMDeviceIDAccessProvider"};
constinit const Protocol ADMDeviceIDServiceFactory::kProtocol{"ADMDeviceIDServiceFactory"};
constinit const Protocol ADMDeviceIDInterpreter::kProtocol{"ADMDeviceIDInterpreter"};

RefPtr<ADMDeviceIDInterpreter> ADMDeviceIDInterpreter::initWithDeviceIDString(
    const String& deviceID) {
  const Class* info = classNamed("ADMDeviceIDInterpreter");
  if (info == nullptr) return nullptr;
  const Value interpreter =
      instantiate(*info, Selector("initWithDeviceIDString:"), {Value::sharing(&deviceID)});
  return RefPtr<ADMDeviceIDInterpreter>(castTo<ADMDeviceIDInterpreter>(interpreter));
}

}  // namespace commandfilter
