// The framework's protocols as data, and the classes that are made by name.
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMCapabilitiesInfoProvider.h"
#include "runtime/device_model/ADMDeviceIDInterpreter.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"
#include "runtime/device_model/ADMIOProvider.h"
#include "runtime/device_model/ADMModelInfo.h"
#include "runtime/device_model/ADMModelInfoManager.h"
#include "runtime/device_model/ADMServiceInfoDelegate.h"
#include "runtime/device_model/ADMStatusFactory.h"
#include "runtime/device_model/IDMDevice.h"

namespace commandfilter {

constinit const Protocol ADMDeviceIDAccessProvider::kProtocol{"ADMDeviceIDAccessProvider"};
constinit const Protocol ADMDeviceIDServiceFactory::kProtocol{"ADMDeviceIDServiceFactory"};
constinit const Protocol ADMDeviceIDInterpreter::kProtocol{"ADMDeviceIDInterpreter"};
constinit const Protocol ADMIOProvider::kProtocol{"ADMIOProvider"};
constinit const Protocol ADMModelInfo::kProtocol{"ADMModelInfo"};
constinit const Protocol ADMModelInfoManager::kProtocol{"ADMModelInfoManager"};
constinit const Protocol ADMServiceInfoDelegate::kProtocol{"ADMServiceInfoDelegate"};
constinit const Protocol ADMStatusFactory::kProtocol{"ADMStatusFactory"};
constinit const Protocol IDMDevice::kProtocol{"IDMDevice"};

RefPtr<ADMDeviceIDInterpreter> ADMDeviceIDInterpreter::initWithDeviceIDString(
    const String& deviceID) {
  const Class* info = classNamed("ADMDeviceIDInterpreter");
  if (info == nullptr) return nullptr;
  const Value interpreter =
      instantiate(*info, Selector("initWithDeviceIDString:"), {Value::sharing(&deviceID)});
  return RefPtr<ADMDeviceIDInterpreter>(castTo<ADMDeviceIDInterpreter>(interpreter));
}

RefPtr<ADMModelInfoManager> ADMModelInfoManager::sharedManager() {
  const Selector selector("sharedManager");
  const Class* info = classNamed("ADMModelInfoManager");
  if (info == nullptr || info->classMethod(selector) == nullptr) return nullptr;
  const Value manager = sendToClass(*info, selector);
  return RefPtr<ADMModelInfoManager>(castTo<ADMModelInfoManager>(manager));
}

Value ADMCapabilitiesInfoProvider::initWithServiceInfo(const Value& serviceInfo) {
  const Class* info = classNamed("ADMCapabilitiesInfoProvider");
  if (info == nullptr) return {};
  return instantiate(*info, Selector("initWithServiceInfo:"), {serviceInfo});
}

RefPtr<IDMDevice> IDMDevice::initFromInfo_withHandler(const Class& implementor,
                                                      const Dictionary& info,
                                                      const Value& handler) {
  const Value device = instantiate(implementor, Selector("initFromInfo:withHandler:"),
                                   {Value::sharing(&info), handler});
  return RefPtr<IDMDevice>(castTo<IDMDevice>(device));
}

}  // namespace commandfilter
