#include "device_io/ADMCUPSSideChannelIOProvider.h"

#include <gtest/gtest.h>

#include <string>

#include "device_io/ADMCUPSSideChannelDevice.h"
#include "device_io/ADMIOProviderFactory.h"
#include "device_io/SystemVersion.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Description.h"
#include "runtime/Send.h"

namespace commandfilter {
namespace {

using Provider = ADMCUPSSideChannelIOProvider;

// The version of the process, which every test sets as it needs it.
class SideChannelIOProvider : public ::testing::Test {
 protected:
  ~SideChannelIOProvider() override { Provider::cacheSystemVersion(0); }

  // The provider for the URI has to be there exactly when the URI is supported.
  static bool supports(const std::string& uri) {
    const Ref<String> text = String::create(uri);
    const bool supported = Provider::supportsURI(text.get());
    EXPECT_EQ(static_cast<bool>(ADMIOProviderFactory::newIOProviderForDeviceURI(text.get())),
              supported);
    return supported;
  }
  static void setVersion(const char* version) {
    Provider::cacheSystemVersion(systemVersionNumber(version).value_or(kDefaultSystemVersion));
  }
};

TEST_F(SideChannelIOProvider, ListsItsSchemesInOrder) {
  EXPECT_EQ(descriptionOf(Value(Provider::supportedSchemes())),
            "(\n    mdns,\n    dnssd,\n    riousbprint,\n    bluetooth\n)");
}

TEST_F(SideChannelIOProvider, SupportsUSBOverTheNetworkWhateverFollows) {
  for (const char* rest : {":", "://", "://Acme/M1?serial=1", ":x", "://[::1]/", ":%20"}) {
    EXPECT_TRUE(supports(std::string("riousbprint") + rest)) << rest;
  }
}

TEST_F(SideChannelIOProvider, SupportsServiceDiscoveryOnlyForTheServiceType) {
  for (const char* scheme : {"dnssd", "mdns"}) {
    const std::string start = scheme;
    EXPECT_TRUE(supports(start + "://Acme%20M1._riousbprint._tcp.local./"));
    EXPECT_TRUE(supports(start + ":x?service=_riousbprint"));
    EXPECT_TRUE(supports(start + ":_riousbprint"));
    EXPECT_FALSE(supports(start + "://Acme%20M1._ipp._tcp.local./"));
    EXPECT_FALSE(supports(start + "://Acme._RIOUSBPRINT._tcp.local./"));
    EXPECT_FALSE(supports(start + "://Acme.riousbprint._tcp.local./"));
    EXPECT_FALSE(supports(start + ":"));
  }
}

TEST_F(SideChannelIOProvider, ComparesSchemesExactly) {
  EXPECT_FALSE(supports("DNSSD://Acme._riousbprint._tcp.local./"));
  EXPECT_FALSE(supports("Mdns://Acme._riousbprint._tcp.local./"));
  EXPECT_FALSE(supports("RIOUSBPRINT://Acme"));
  setVersion("10.7");
  EXPECT_FALSE(supports("Bluetooth://00-11"));
}

TEST_F(SideChannelIOProvider, SupportsNoOtherScheme) {
  for (const char* uri : {"usb://Acme/M1", "socket://printer:9100", "ipp://printer/ipp/print",
                          "lpd://printer/queue", "simulated:///device.plist",
                          "riousbprinter://Acme", "xriousbprint://Acme", "_riousbprint:", ""}) {
    EXPECT_FALSE(supports(uri)) << uri;
  }
}

TEST_F(SideChannelIOProvider, SupportsNothingThatIsNoURI) {
  for (const char* text : {"riousbprint", "riousbprint//Acme", " riousbprint://Acme",
                           "riousbprint://Acme M1", "riousbprint://%zz"}) {
    EXPECT_FALSE(supports(text)) << text;
  }
  EXPECT_FALSE(Provider::supportsURI(nullptr));
  EXPECT_FALSE(ADMIOProviderFactory::newIOProviderForDeviceURI(nullptr));
}

TEST_F(SideChannelIOProvider, SupportsBluetoothAboveAVersion) {
  const std::string uri = "bluetooth://00-11-22-33-44-55/M1";
  setVersion("10.6.2");
  EXPECT_FALSE(supports(uri));
  setVersion("10.6.3");
  EXPECT_TRUE(supports(uri));
  setVersion("10.7");
  EXPECT_TRUE(supports(uri));
  setVersion("10.10");
  EXPECT_FALSE(supports(uri));
  setVersion("10.10.1");
  EXPECT_FALSE(supports(uri));
}

TEST_F(SideChannelIOProvider, HasTheDefaultVersionWithoutARecord) {
  EXPECT_FALSE(Provider::systemVersionString());
  EXPECT_EQ(Provider::systemVersion(), 4192);
  EXPECT_FALSE(supports("bluetooth://00-11-22-33-44-55/M1"));
}

TEST_F(SideChannelIOProvider, ComputesTheVersionOnceInAProcess) {
  Provider::cacheSystemVersion(4321);
  EXPECT_EQ(Provider::systemVersion(), 4321);
  Provider::cacheSystemVersion(0);
  EXPECT_EQ(Provider::systemVersion(), 4192);
}

TEST_F(SideChannelIOProvider, NamesTheClassOfTheDeviceOnly) {
  const Ref<Provider> provider = Provider::create();
  const auto implementor = [&](const char* name) {
    return provider->implementorClassForProtocolWithName(String::create(name).get());
  };
  EXPECT_EQ(implementor("IDMDevice"), &ADMCUPSSideChannelDevice::kClass);
  for (const char* name : {"idmdevice", "IDMDevice ", "IDMDevic", ""}) {
    EXPECT_EQ(implementor(name), nullptr) << name;
  }
  EXPECT_EQ(provider->implementorClassForProtocolWithName(nullptr), nullptr);
}

TEST_F(SideChannelIOProvider, ComesFromItsFactory) {
  const RefPtr<ADMIOProvider> provider =
      ADMIOProviderFactory::newIOProviderForDeviceURI(String::create("riousbprint://Acme").get());
  ASSERT_TRUE(provider);
  EXPECT_NE(castTo<Provider>(&provider->object()), nullptr);
  EXPECT_TRUE(provider->object().conformsToProtocol(ADMIOProvider::kProtocol));
  EXPECT_EQ(provider->object().referenceCount(), 1U);
  const Value sent =
      sendToClass(ADMIOProviderFactory::kClass, Selector("newIOProviderForDeviceURI:"),
                  {String::create("riousbprint://Acme")});
  EXPECT_NE(castTo<ADMIOProvider>(sent), nullptr);
}

}  // namespace
}  // namespace commandfilter
