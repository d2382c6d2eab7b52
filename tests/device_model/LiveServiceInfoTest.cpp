#include "device_model/LiveServiceInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "Doubles.h"
#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMSuppliesStatus.h"

namespace commandfilter {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::RecordingDelegate;
using testing::ScriptedDevice;

// A device that an I/O provider brings, and what was asked of it.
class BroughtDevice final : public Implements<Object, IDMDevice> {
 public:
  static const Class kClass;
  struct Script {
    std::string deviceID;
    std::string modelName;
    std::vector<std::string> calls;
  };
  static Script& script() {
    static Script shared;
    return shared;
  }

  static RefPtr<BroughtDevice> initFromInfo_withHandler(const Dictionary* info,
                                                        const Value& handler) {
    script().calls.push_back("init " +
                             std::string(textOf(castTo<String>(info->objectForKey("URI")))));
    EXPECT_TRUE(handler.isNil());
    return make<BroughtDevice>();
  }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Ref<Dictionary> retrieveParameters_withHandler(const Array& keys,
                                                 const Value& /*handler*/) override {
    script().calls.push_back("parameters " + std::to_string(keys.count()));
    DictionaryBuilder found;
    found.set(kModelNameProp, String::create(script().modelName));
    found.set(kVendorNameProp, String::create("Vemo"));
    return found.build();
  }
  RefPtr<String> newRetrievedDeviceIDWithTimeout(double /*timeout*/) override {
    script().calls.emplace_back("deviceID");
    if (script().deviceID.empty()) return nullptr;
    return String::create(script().deviceID);
  }
  bool isReachable() override { return true; }
};

class Provider final : public Implements<Object, ADMIOProvider> {
 public:
  static const Class kClass;
  explicit Provider(const Class* implementor) : implementor_(implementor) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  const Class* implementorClassForProtocolWithName(const String* name) override {
    return textOf(name) == "IDMDevice" ? implementor_ : nullptr;
  }

 private:
  const Class* implementor_;
};

constexpr auto kDeviceProtocols = conformances<BroughtDevice, IDMDevice>();
constexpr std::array kDeviceInitializers{
    initializer<&BroughtDevice::initFromInfo_withHandler>("initFromInfo:withHandler:")};
constexpr auto kProviderProtocols = conformances<Provider, ADMIOProvider>();

}  // namespace

constinit const Class BroughtDevice::kClass{.name = "BroughtDevice",
                                            .base = &Object::kClass,
                                            .protocols = kDeviceProtocols,
                                            .initializers = kDeviceInitializers};
constinit const Class Provider::kClass{
    .name = "Provider", .base = &Object::kClass, .protocols = kProviderProtocols};

namespace {

TEST(LiveServiceInfo, ResolvesAtOnceAndAsksNothing) {
  ScriptedDevice device;
  const Ref<LiveServiceInfo> info = LiveServiceInfo::create(*String::create("socket://a"), nullptr,
                                                            {device.transport, device.queue});
  EXPECT_EQ(info->serviceState(), 0);
  const Ref<RecordingDelegate> delegate = make<RecordingDelegate>();
  info->setDelegate(delegate.get());
  info->resolveWithTimeout(30);
  EXPECT_THAT(delegate->calls, ElementsAre("resolved"));
  EXPECT_EQ(info->serviceState(), 1);
  EXPECT_EQ(info->uri()->view(), "socket://a");
  EXPECT_THAT(device.backend.requests, IsEmpty());
  EXPECT_THAT(device.queue.calls, IsEmpty());
}

TEST(LiveServiceInfo, AsksTheBackendForTheDeviceID) {
  ScriptedDevice device;
  device.backend.deviceID = "MFG:Acme;MDL:\xC4;";
  device.queue.ppd["1284DeviceID"] = "MFG:Other;";
  const Ref<LiveServiceInfo> info = device.resolved();
  EXPECT_EQ(info->deviceID()->view(), "MFG:Acme;MDL:\xC3\x84;");
  EXPECT_EQ(info->modelName()->view(), "\xC3\x84");
  EXPECT_EQ(info->vendorName()->view(), "Acme");
  EXPECT_TRUE(info->isReachable());
  EXPECT_THAT(device.backend.requests, ElementsAre("4"));
  EXPECT_THAT(device.queue.calls, IsEmpty());
}

TEST(LiveServiceInfo, FallsBackToThePPD) {
  ScriptedDevice device;
  device.queue.ppd["1284DeviceID"] = "MFG:Acme;MDL:M1;";
  const Ref<LiveServiceInfo> info = device.resolved();
  EXPECT_EQ(info->deviceID()->view(), "MFG:Acme;MDL:M1;");
  EXPECT_EQ(info->modelName()->view(), "M1");
  EXPECT_FALSE(info->isReachable());
  EXPECT_THAT(device.backend.requests, ElementsAre("4"));
}

TEST(LiveServiceInfo, FallsBackToThePPDForAnIDWithoutText) {
  ScriptedDevice device;
  device.backend.deviceID = std::string(2, '\0');
  device.queue.ppd["1284DeviceID"] = "MFG:Acme;";
  EXPECT_EQ(device.resolved()->deviceID()->view(), "MFG:Acme;");
}

TEST(LiveServiceInfo, KnowsWhatTheDeviceDoesNotTell) {
  ScriptedDevice device;
  const Ref<LiveServiceInfo> info = device.resolved();
  EXPECT_EQ(info->deviceID(), nullptr);
  EXPECT_EQ(info->deviceID(), nullptr);
  EXPECT_EQ(info->modelName(), nullptr);
  EXPECT_EQ(info->vendorName(), nullptr);
  EXPECT_THAT(device.backend.requests, ElementsAre("4"));
  device.queue.ppd["ModelName"] = "P";
  device.queue.ppd["Manufacturer"] = "V";
  EXPECT_EQ(info->modelName()->view(), "P");
  EXPECT_EQ(info->vendorName()->view(), "V");
}

TEST(LiveServiceInfo, AsksTheDeviceThatTheIOProviderBrings) {
  ScriptedDevice device;
  device.backend.deviceID = "MFG:Wrong;";
  BroughtDevice::script() = {"MFG:Acme;MDL:M1;", "From the PPD", {}};
  const Ref<Provider> provider = make<Provider>(&BroughtDevice::kClass);
  const Ref<LiveServiceInfo> info = device.resolved("riousbprint://x", provider.get());
  EXPECT_EQ(info->serviceState(), 1);
  EXPECT_EQ(info->deviceID()->view(), "MFG:Acme;MDL:M1;");
  EXPECT_EQ(info->deviceID()->view(), "MFG:Acme;MDL:M1;");
  EXPECT_EQ(info->modelName()->view(), "From the PPD");
  EXPECT_EQ(info->vendorName()->view(), "Vemo");
  EXPECT_THAT(BroughtDevice::script().calls,
              ElementsAre("init riousbprint://x", "deviceID", "parameters 2"));
  EXPECT_THAT(device.backend.requests, IsEmpty());
}

TEST(LiveServiceInfo, AsksTheBroughtDeviceOnceEvenWhenItHasNoID) {
  ScriptedDevice device;
  device.queue.ppd["1284DeviceID"] = "MFG:PPD;";
  BroughtDevice::script() = {"", "", {}};
  const Ref<Provider> provider = make<Provider>(&BroughtDevice::kClass);
  const Ref<LiveServiceInfo> info = device.resolved("riousbprint://x", provider.get());
  EXPECT_EQ(info->deviceID(), nullptr);
  EXPECT_EQ(info->deviceID(), nullptr);
  EXPECT_FALSE(info->isReachable());
  EXPECT_THAT(BroughtDevice::script().calls, ElementsAre("init riousbprint://x", "deviceID"));
  EXPECT_EQ(info->modelName(), nullptr) << "an empty name is none";
}

TEST(LiveServiceInfo, DoesNotResolveWhenTheIOProviderHasNoDevice) {
  ScriptedDevice device;
  for (const Class* implementor : {static_cast<const Class*>(nullptr), &Provider::kClass}) {
    const Ref<Provider> provider = make<Provider>(implementor);
    const Ref<LiveServiceInfo> info = LiveServiceInfo::create(
        *String::create("dnssd://x"), provider.get(), {device.transport, device.queue});
    const Ref<RecordingDelegate> delegate = make<RecordingDelegate>();
    info->setDelegate(delegate.get());
    info->resolveWithTimeout(30);
    EXPECT_THAT(delegate->calls, ElementsAre("the I/O provider has no device for dnssd://x"));
    EXPECT_EQ(info->serviceState(), 0);
    EXPECT_EQ(info->deviceID(), nullptr);
  }
}

TEST(LiveServiceInfo, TellsHowTheDeviceIsConnected) {
  ScriptedDevice device;
  const auto typeOf = [&device](const std::string& uri) {
    return device.resolved(uri)->connectionType()->text();
  };
  EXPECT_EQ(typeOf("dnssd://x"), "Rendezvous");
  EXPECT_EQ(typeOf("mdns://x"), "Rendezvous");
  EXPECT_EQ(typeOf("usb://x"), "USB");
  EXPECT_EQ(typeOf("bluetooth://x"), "Bluetooth");
  for (const char* uri :
       {"socket://x", "lpd://x", "ipp://x", "ipps://x", "http://x", "SOCKET://x"}) {
    EXPECT_EQ(typeOf(uri), "Network") << uri;
  }
  EXPECT_EQ(typeOf("none:/"), "Other");
  EXPECT_EQ(typeOf(""), "Other");
}

TEST(LiveServiceInfo, TellsTheFactsOfTheConnection) {
  ScriptedDevice device;
  device.queue.parts = {"socket", "10.0.0.5", 9100, "/path?serial=4711&x=&=y&z+snmp=false"};
  const RefPtr<Dictionary> params = device.resolved()->connectionParams();
  const auto text = [&params](std::string_view key) {
    return std::string(textOf(castTo<String>(params->objectForKey(key))));
  };
  EXPECT_EQ(text(kIPAddressParam), "10.0.0.5");
  EXPECT_EQ(params->objectForKey("Port").number().intValue(), 9100);
  EXPECT_EQ(text("serial"), "4711");
  EXPECT_EQ(text("snmp"), "false");
  EXPECT_EQ(params->count(), 5U);
  EXPECT_TRUE(
      device.resolved("usb://Acme/M1")->connectionParams()->objectForKey("IPAddress").isNil());
  device.queue.parts.resource = "/?IPAddress=10.6.6.6&Port=x";
  const RefPtr<Dictionary> contradicted = device.resolved()->connectionParams();
  EXPECT_EQ(textOf(castTo<String>(contradicted->objectForKey(kIPAddressParam))), "10.0.0.5");
  EXPECT_EQ(contradicted->objectForKey("Port").number().intValue(), 9100);
  device.queue.parts = {"socket", "10.0.0.5", 0, ""};
  EXPECT_TRUE(device.resolved()->connectionParams()->objectForKey("Port").isNil());
}

TEST(LiveServiceInfo, ReadsTheQueueOnceTheBackendHasAnswered) {
  ScriptedDevice device;
  device.queue.ipp["marker-names"] = {"A"};
  EXPECT_EQ(device.resolved()->queueAttributes().count("marker-names"), 1U);
  EXPECT_THAT(device.backend.requests, ElementsAre("4"));
}

TEST(LiveServiceInfo, HasStatusServicesOnceItIsResolved) {
  ScriptedDevice device;
  const Ref<LiveServiceInfo> info = device.resolved();
  EXPECT_TRUE(conformsToProtocol(info->statusService(ADMDeviceStatus::kProtocol),
                                 ADMDeviceStatus::kProtocol));
  EXPECT_TRUE(conformsToProtocol(info->statusService(ADMSuppliesStatus::kProtocol),
                                 ADMSuppliesStatus::kProtocol));
  EXPECT_TRUE(info->statusService(ADMInterface::kProtocol).isNil());
  const Ref<LiveServiceInfo> unresolved = LiveServiceInfo::create(
      *String::create("socket://a"), nullptr, {device.transport, device.queue});
  EXPECT_TRUE(unresolved->statusService(ADMDeviceStatus::kProtocol).isNil());
  EXPECT_THAT(device.backend.requests, IsEmpty());
}

}  // namespace
}  // namespace commandfilter
