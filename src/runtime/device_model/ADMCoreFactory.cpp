#include "runtime/device_model/ADMCoreFactory.h"

#include <initializer_list>

#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Send.h"

namespace commandfilter {

namespace {

// What the class method gives, as a T; nil when the class has no such method. A framework that
// offers only a part of the services is one that lacks the others.
template <typename T>
RefPtr<T> ask(const Class& info, const Selector& selector,
              std::initializer_list<Value> arguments = {}) {
  if (info.classMethod(selector) == nullptr) return nullptr;
  const Value made = sendToClass(info, selector, arguments);
  return RefPtr<T>(castTo<T>(made));
}

}  // namespace

std::optional<ADMCoreFactory> ADMCoreFactory::find() {
  const Class* info = classNamed("ADMCoreFactory");
  if (info == nullptr) return std::nullopt;
  return ADMCoreFactory(*info);
}

RefPtr<ADMDeviceIDServiceFactory> ADMCoreFactory::newDeviceIDServiceFactory() const {
  return ask<ADMDeviceIDServiceFactory>(*class_, Selector("newDeviceIDServiceFactory"));
}

RefPtr<ADMServiceInfo> ADMCoreFactory::newServiceInfoWithURI_ioProvider(
    const String& uri, const ADMIOProvider& ioProvider) const {
  return ask<ADMServiceInfo>(*class_, Selector("newServiceInfoWithURI:ioProvider:"),
                             {Value::sharing(&uri), Value::sharing(&ioProvider.object())});
}

RefPtr<ADMServiceInfo> ADMCoreFactory::newServiceInfoWithURI_deviceClass(
    const String& uri, const String& deviceClass) const {
  return ask<ADMServiceInfo>(*class_, Selector("newServiceInfoWithURI:deviceClass:"),
                             {Value::sharing(&uri), Value::sharing(&deviceClass)});
}

RefPtr<ADMStatusFactory> ADMCoreFactory::newStatusFactory() const {
  return ask<ADMStatusFactory>(*class_, Selector("newStatusFactory"));
}

}  // namespace commandfilter
