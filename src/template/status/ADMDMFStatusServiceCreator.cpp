#include "template/status/ADMDMFStatusServiceCreator.h"

#include <string>
#include <string_view>
#include <utility>

#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Dictionary.h"
#include "runtime/Format.h"
#include "runtime/Send.h"
#include "runtime/ValueVector.h"
#include "runtime/device_model/ADMServiceInfo.h"
#include "runtime/device_model/DeviceModelConstants.h"
#include "template/status/RecentQuestions.h"

namespace commandfilter {

namespace {

constexpr auto kCreatorProtocols =
    conformances<ADMDMFStatusServiceCreator, ADMStatusServiceCreator>();

MutableDictionary& madeOnDemand(RefPtr<MutableDictionary>& dictionary) {
  if (!dictionary) dictionary = MutableDictionary::create();
  return *dictionary;
}

// Letters, digits, marks and delimiters, which stand in a URI for themselves. A percent sign does
// not: what it begins is text here and no escape.
constexpr bool isLegalInURI(char c) noexcept {
  constexpr std::string_view kSigns = "-_.!~*'();/?:@&=+$,";
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         kSigns.find(c) != std::string_view::npos;
}

std::string withPercentEscapes(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr unsigned kHalfByte = 4;
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    if (isLegalInURI(c)) {
      escaped.push_back(c);
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    escaped.push_back('%');
    escaped.push_back(kDigits[byte >> kHalfByte]);
    escaped.push_back(kDigits[byte & 0xFU]);
  }
  return escaped;
}

}  // namespace

constinit const Class ADMDMFStatusServiceCreator::kClass{
    .name = "ADMDMFStatusServiceCreator", .base = &Object::kClass, .protocols = kCreatorProtocols};

RefPtr<ADMDMFStatusServiceCreator> ADMDMFStatusServiceCreator::initWithDMFServiceInfo(
    const Value& serviceInfo) {
  if (serviceInfo.isNil()) return nullptr;
  return make<ADMDMFStatusServiceCreator>(serviceInfo);
}

ADMDMFStatusServiceCreator::ADMDMFStatusServiceCreator(const Value& serviceInfo) {
  auto* device = castTo<ADMServiceInfo>(serviceInfo);
  if (device == nullptr) return;
  printerURI_ = device->uri();
  if (device->serviceState() == kServiceStateResolved) serviceInfo_ = serviceInfo;
}

ADMDMFStatusServiceCreator::~ADMDMFStatusServiceCreator() = default;

void ADMDMFStatusServiceCreator::setServiceInfo(const Value& serviceInfo) {
  if (serviceInfo.isIdenticalTo(serviceInfo_)) return;
  serviceInfo_ = serviceInfo;
  reinitializeServices();
}

MutableDictionary& ADMDMFStatusServiceCreator::statusServices() {
  return madeOnDemand(statusServices_);
}

Value ADMDMFStatusServiceCreator::statusServiceForName(const String* name) {
  if (name == nullptr || name->isEmpty() || !servicesAvailable()) return {};
  MutableDictionary& services = statusServices();
  const Value key = Value::sharing(name);
  const Value& known = services.objectForKey(key);
  if (!known.isNil()) return known.nullAsNil();
  Value service = newService(*name);
  services.setObject_forKey(service.orNull(), key);
  return service;
}

Value ADMDMFStatusServiceCreator::newService(const String& name) const {
  const RefPtr<String> className = format("ADM%@ServiceFactory", name);
  const Class* factory = className ? classNamed(className->view()) : nullptr;
  static const Selector kStatusService("statusServiceForDMFServiceInfo:");
  if (factory == nullptr || factory->classMethod(kStatusService) == nullptr) return {};
  return sendToClass(*factory, kStatusService, {serviceInfo_});
}

RefPtr<MutableDictionary> ADMDMFStatusServiceCreator::userInfoForServiceName(const String* name) {
  if (name == nullptr) return nullptr;
  MutableDictionary& userInfos = madeOnDemand(userInfos_);
  const Value key = Value::sharing(name);
  if (Object* known = userInfos.objectForKey(key).object()) {
    // Nothing else is put there.
    return RefPtr<MutableDictionary>(static_cast<MutableDictionary*>(known));
  }
  RefPtr<MutableDictionary> userInfo = MutableDictionary::create();
  userInfos.setObject_forKey(userInfo, key);
  return userInfo;
}

RefPtr<RecentQuestions> ADMDMFStatusServiceCreator::recentQuestionsForServiceName(
    const String& name) {
  // Names may be computed, so there is no end of them; these are more than a template needs.
  constexpr std::size_t kMostNames = 64;
  const Value key = Value::sharing(&name);
  if (Object* known = recentQuestions_.objectForKey(key).object()) {
    // Nothing else is put there.
    return RefPtr<RecentQuestions>(static_cast<RecentQuestions*>(known));
  }
  if (recentQuestions_.count() == kMostNames) return nullptr;
  const Ref<RecentQuestions> made = make<RecentQuestions>();
  recentQuestions_.add(key, made);
  return made;
}

void ADMDMFStatusServiceCreator::reinitializeServices() {
  // A service that goes may ask for something in its turn.
  const DictionaryEntries before = std::exchange(recentQuestions_, DictionaryEntries());
  for (const DictionaryEntry& entry : before) {
    auto& questions = static_cast<RecentQuestions&>(*entry.value.object());
    if (questions.referenceCount() == 1) continue;
    questions.forgetService();
    recentQuestions_.set(Value(entry.key), Value(entry.value));
  }
  if (statusServices_) statusServices_->removeAllObjects();
  if (!userInfos_) return;
  // Proxies may still hold a store; it must not keep what was answered.
  ValueVector stores;
  for (const DictionaryEntry& entry : *userInfos_) stores.push_back(entry.value);
  userInfos_->removeAllObjects();
  for (const Value& store : stores) {
    static_cast<MutableDictionary*>(store.object())->removeAllObjects();
  }
}

std::uint64_t ADMDMFStatusServiceCreator::generation() const noexcept {
  const auto lossesOf = [](const RefPtr<MutableDictionary>& store) {
    return store ? store->losses() : 0;
  };
  return 1 + lossesOf(statusServices_) + lossesOf(userInfos_);
}

RefPtr<String> ADMDMFStatusServiceCreator::socketURIFromServiceInfo(
    const Value& serviceInfo) const {
  auto* device = castTo<ADMServiceInfo>(serviceInfo);
  if (device == nullptr) return nullptr;
  if (textOf(device->connectionType().get()) != kRendezvousConnectionType) return nullptr;
  const RefPtr<String> vendor = device->vendorName();
  const RefPtr<String> model = device->modelName();
  const RefPtr<Dictionary> parameters = device->connectionParams();
  const Value address = parameters ? parameters->objectForKey(kIPAddressParam) : Value();
  if (address.isNil() || !model || !vendor) return nullptr;
  const RefPtr<String> uri = format("socket://%@?vendor=%@&product=%@", address, vendor, model);
  if (!uri) return nullptr;
  return String::create(withPercentEscapes(uri->view()));
}

}  // namespace commandfilter
