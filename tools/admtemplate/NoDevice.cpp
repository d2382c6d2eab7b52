#include "NoDevice.h"

#include "runtime/Cast.h"

namespace commandfilter::tools {

namespace {

constexpr auto kProtocols = conformances<NoDevice, ADMStatusServiceCreator>();

}  // namespace

constinit const Class NoDevice::kClass{
    .name = "NoDevice", .base = &Object::kClass, .protocols = kProtocols};

RefPtr<MutableDictionary> NoDevice::userInfoForServiceName(const String* name) {
  if (name == nullptr) return nullptr;
  const Value key = Value::sharing(name);
  if (auto* answers = castTo<MutableDictionary>(answers_->objectForKey(key))) {
    return RefPtr<MutableDictionary>(answers);
  }
  const Ref<MutableDictionary> answers = MutableDictionary::create();
  answers_->setObject_forKey(answers, key);
  return answers;
}

}  // namespace commandfilter::tools
