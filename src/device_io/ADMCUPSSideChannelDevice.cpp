#include "device_io/ADMCUPSSideChannelDevice.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>

#include "device_io/CupsSideChannel.h"
#include "device_io/SideChannelBuffer.h"
#include "filter/environment/CupsLibrary.h"
#include "runtime/Cast.h"
#include "runtime/device_model/DeviceModelConstants.h"

namespace commandfilter {

namespace {

constexpr std::size_t kInitialBuffer = 2048;
// In seconds: the first timeout, what each silence adds, and the last.
constexpr double kFirstTimeout = 20;
constexpr double kTimeoutStep = 20;
constexpr double kLastTimeout = 60;
// What the reachability test would like; the schedule above holds all the same.
constexpr double kReachabilityTimeout = 10;

constexpr auto kDeviceProtocols = conformances<ADMCUPSSideChannelDevice, IDMDevice>();
constexpr std::array kDeviceInitializers{
    initializer<&ADMCUPSSideChannelDevice::initFromInfo_withHandler>("initFromInfo:withHandler:")};

Ref<Dictionary> flattened(const Dictionary* info) {
  if (info == nullptr) return Dictionary::create();
  DictionaryBuilder properties(*info);
  if (const auto* nested = castTo<Dictionary>(info->objectForKey(kParamsProp))) {
    for (const DictionaryEntry& entry : *nested) properties.set(entry.key, entry.value);
  }
  return properties.build();
}

}  // namespace

constinit const Class ADMCUPSSideChannelDevice::kClass{.name = "ADMCUPSSideChannelDevice",
                                                       .base = &Object::kClass,
                                                       .protocols = kDeviceProtocols,
                                                       .initializers = kDeviceInitializers};

RefPtr<ADMCUPSSideChannelDevice> ADMCUPSSideChannelDevice::initFromInfo_withHandler(
    const Dictionary* info, const Value& /*handler*/) {
  return deviceFromInfo_sideChannel(info, std::make_unique<CupsSideChannel>());
}

Ref<ADMCUPSSideChannelDevice> ADMCUPSSideChannelDevice::deviceFromInfo_sideChannel(
    const Dictionary* info, std::unique_ptr<SideChannel> sideChannel) {
  return make<ADMCUPSSideChannelDevice>(flattened(info), std::move(sideChannel));
}

ACommandFilterEnvironment* ADMCUPSSideChannelDevice::environment() {
  if (environment_ == nullptr) environment_ = ACommandFilterEnvironment::environment();
  return environment_;
}

Ref<String> ADMCUPSSideChannelDevice::vendorName() { return String::create("Vemo"); }

RefPtr<String> ADMCUPSSideChannelDevice::readPPDModelName() {
  ACommandFilterEnvironment* job = environment();
  PPDFile* file = job != nullptr ? job->printerPPDFile() : nullptr;
  if (file == nullptr) return nullptr;
  // An open PPD proves that the library is there.
  const ppd_attr_t* attribute = CupsLibrary::shared()->ppdFindAttribute(file, "ModelName", nullptr);
  if (attribute == nullptr || attribute->value == nullptr) return nullptr;
  return String::fromUTF8(attribute->value);
}

Ref<String> ADMCUPSSideChannelDevice::ppdModelName() {
  if (!ppdModelName_) ppdModelName_ = readPPDModelName();
  if (!ppdModelName_) ppdModelName_ = String::create("");
  return Ref<String>(*ppdModelName_);
}

bool ADMCUPSSideChannelDevice::isReachable() {
  return static_cast<bool>(newRetrievedDeviceIDWithTimeout(kReachabilityTimeout));
}

RefPtr<String> ADMCUPSSideChannelDevice::newRetrievedDeviceIDWithTimeout(double /*timeout*/) {
  if (!deviceIDString_) deviceIDString_ = requestDeviceID();
  return deviceIDString_;
}

RefPtr<String> ADMCUPSSideChannelDevice::requestDeviceID() {
  SideChannelBuffer buffer(kInitialBuffer);
  double timeout = kFirstTimeout;
  while (buffer) {
    // One byte stays free for the zero at the end.
    const std::size_t room = buffer.length() - 1;
    if (room > INT_MAX) return nullptr;
    int length = static_cast<int>(room);
    switch (
        sideChannel_->doRequest(SideChannelCommand::GetDeviceID, buffer.data(), length, timeout)) {
      case SideChannelStatus::Timeout:
        if (timeout >= kLastTimeout) return nullptr;
        timeout = std::min(timeout + kTimeoutStep, kLastTimeout);
        break;
      case SideChannelStatus::TooBig:
        buffer = SideChannelBuffer(2 * buffer.length());
        break;
      case SideChannelStatus::OK:
        if (length <= 0) return nullptr;
        buffer.data()[std::min(static_cast<std::size_t>(length), room)] = '\0';
        return String::fromDeviceText(buffer.data());
      default:
        return nullptr;
    }
  }
  return nullptr;
}

Ref<Dictionary> ADMCUPSSideChannelDevice::retrieveParameters_withHandler(const Array& keys,
                                                                         const Value& /*handler*/) {
  DictionaryBuilder parameters;
  for (const Value& key : keys) {
    const Value& value = connectionProperties_->objectForKey(key);
    if (!value.isNil()) parameters.set(key, value);
  }
  const Value modelNameKey = String::create(std::string(kModelNameProp));
  if (parameters.objectForKey(modelNameKey).isNil()) parameters.set(modelNameKey, ppdModelName());
  const Value vendorNameKey = String::create(std::string(kVendorNameProp));
  if (parameters.objectForKey(vendorNameKey).isNil()) parameters.set(vendorNameKey, vendorName());
  return parameters.build();
}

}  // namespace commandfilter
