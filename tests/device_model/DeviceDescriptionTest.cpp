#include "device_model/DeviceDescription.h"

#include <gtest/gtest.h>

#include <string>

#include "Doubles.h"
#include "TestValues.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

using testing::plist;

std::string faultOf(const std::string& entries) {
  Result<Ref<Dictionary>> description =
      checkedDeviceDescription(plist("<dict>" + entries + "</dict>"));
  return description ? "" : description.reason();
}
std::string entry(const std::string& key, const std::string& value) {
  return "<key>" + key + "</key>" + value;
}
std::string dict(const std::string& key, const std::string& value) {
  return "<dict>" + entry(key, value) + "</dict>";
}
std::string service(const std::string& value) { return entry("StatusServices", dict("S", value)); }

TEST(DeviceDescription, MayBeEmpty) { EXPECT_EQ(faultOf(""), ""); }

TEST(DeviceDescription, MayHaveEveryEntry) {
  EXPECT_EQ(
      faultOf(
          "<key>DeviceID</key><string>MFG:A;</string><key>ServiceState</key><integer>1</integer>"
          "<key>URI</key><string>a:</string><key>ConnectionType</key><string>USB</string>"
          "<key>VendorName</key><string>A</string><key>ModelName</key><string>M</string>"
          "<key>ConnectionParams</key><dict/>"
          "<key>Resolution</key><dict><key>Delay</key><real>0.5</real><key>Outcome</key>"
          "<string>never</string></dict>"
          "<key>ModelInfo</key><dict><key>T</key><dict/></dict>"
          "<key>StatusServices</key><dict><key>S</key><dict><key>Messages</key><dict>"
          "<key>a</key><integer>1</integer><key>b:</key><dict/><key>c:d:</key><true/></dict>"
          "<key>Features</key><dict><key>F</key><dict><key>Value</key><true/>"
          "<key>Identifiers</key><array/><key>Properties</key><dict><key>P</key><dict>"
          "<key>Value</key><true/><key>Identifiers</key><dict/></dict></dict></dict></dict>"
          "</dict></dict><key>Another</key><true/>"),
      "");
}

TEST(DeviceDescription, NamesTheEntryThatIsOfAnotherKind) {
  const std::string number = "<integer>1</integer>";
  EXPECT_EQ(faultOf(entry("DeviceID", number)), "DeviceID is not a text");
  EXPECT_EQ(faultOf(entry("URI", number)), "URI is not a text");
  EXPECT_EQ(faultOf(entry("ConnectionType", number)), "ConnectionType is not a text");
  EXPECT_EQ(faultOf(entry("VendorName", number)), "VendorName is not a text");
  EXPECT_EQ(faultOf(entry("ModelName", number)), "ModelName is not a text");
  EXPECT_EQ(faultOf(entry("ConnectionParams", number)), "ConnectionParams is not a dictionary");
  EXPECT_EQ(faultOf(entry("Resolution", number)), "Resolution is not a dictionary");
  EXPECT_EQ(faultOf(entry("Resolution", dict("Delay", "<string>1</string>"))),
            "Resolution > Delay is not a number of seconds");
  EXPECT_EQ(faultOf(entry("Resolution", dict("Delay", "<real>-1</real>"))),
            "Resolution > Delay is not a number of seconds");
  EXPECT_EQ(faultOf(entry("Resolution", dict("Outcome", "<string>later</string>"))),
            "Resolution > Outcome is not \"resolve\", \"fail\" or \"never\"");
  EXPECT_EQ(faultOf(entry("ModelInfo", number)), "ModelInfo is not a dictionary");
  EXPECT_EQ(faultOf(entry("ModelInfo", dict("T", number))), "ModelInfo > T is not a dictionary");
  EXPECT_EQ(faultOf(entry("StatusServices", "<array/>")), "StatusServices is not a dictionary");
  EXPECT_EQ(faultOf(service(number)), "StatusServices > S is not a dictionary");
  EXPECT_EQ(faultOf(service(dict("Messages", number))),
            "StatusServices > S > Messages is not a dictionary");
  EXPECT_EQ(faultOf(service(dict("Messages", dict("m:", number)))),
            "StatusServices > S > Messages > m: is not a dictionary");
  EXPECT_EQ(
      faultOf(service(dict("Messages", dict(std::string(33, ':'), number)))),
      "StatusServices > S > Messages > " + std::string(33, ':') + " is not named as a message");
  EXPECT_EQ(faultOf(service(dict("Features", number))),
            "StatusServices > S > Features is not a dictionary");
  EXPECT_EQ(faultOf(service(dict("Features", dict("F", number)))),
            "StatusServices > S > Features > F is not a dictionary");
  EXPECT_EQ(faultOf(service(dict("Features", dict("F", dict("Identifiers", "<dict/>"))))),
            "StatusServices > S > Features > F > Identifiers is not an array");
  EXPECT_EQ(faultOf(service(dict("Features", dict("F", dict("Properties", "<array/>"))))),
            "StatusServices > S > Features > F > Properties is not a dictionary");
  EXPECT_EQ(faultOf(service(dict("Features", dict("F", dict("Properties", dict("P", number)))))),
            "StatusServices > S > Features > F > Properties > P is not a dictionary");
  EXPECT_EQ(
      faultOf(service(
          dict("Features", dict("F", dict("Properties", dict("P", dict("Identifiers", number))))))),
      "StatusServices > S > Features > F > Properties > P > Identifiers is not a dictionary");
}

TEST(DeviceDescription, HasAStateOf32Bits) {
  for (const char* state : {"<integer>-2147483648</integer>", "<integer>2147483647</integer>"}) {
    EXPECT_EQ(faultOf(entry("ServiceState", state)), "") << state;
  }
  for (const char* state :
       {"<string>1</string>", "<real>1</real>", "<array/>", "<integer>4294967297</integer>",
        "<integer>2147483648</integer>", "<integer>-2147483649</integer>",
        "<integer>18446744073709551615</integer>"}) {
    EXPECT_EQ(faultOf(entry("ServiceState", state)), "ServiceState is not an integer of 32 bits")
        << state;
  }
}

TEST(DeviceDescription, IsADictionary) {
  Result<Ref<Dictionary>> description = checkedDeviceDescription(plist("<array/>"));
  EXPECT_FALSE(description);
  EXPECT_EQ(description.reason(), "is not a dictionary");
}

TEST(DeviceDescription, IsReadFromAFile) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.path() / "device.plist";
  testing::writeFile(path, "<plist><dict><key>ModelName</key><string>M</string></dict></plist>");
  Result<Ref<Dictionary>> description = readDeviceDescription(path);
  ASSERT_TRUE(description) << description.reason();
  EXPECT_EQ((*description)->count(), 1U);
}

TEST(DeviceDescription, FailsWithTheNameOfTheFile) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.path() / "device.plist";
  const auto reason = [&path] { return readDeviceDescription(path).reason(); };
  EXPECT_TRUE(reason().starts_with(path + ": ")) << "missing: " << reason();
  std::string deep = "<plist>";
  for (int i = 0; i < 100'000; ++i) deep += "<dict><key>ModelInfo</key>";
  for (const std::string& text :
       {std::string(), std::string("<plist><dict><key>Mod"), std::string("bplist00\xFF\xFF"),
        std::string("<plist><array/></plist>"), deep}) {
    testing::writeFile(path, text);
    EXPECT_TRUE(reason().starts_with(path + ": ")) << reason();
  }
  EXPECT_TRUE(readDeviceDescription(folder.path()).reason().starts_with(folder.path().string()));
}

TEST(SimulatedURI, NamesAFile) {
  EXPECT_EQ(*pathOfSimulatedURI("simulated:///a/b.plist"), "/a/b.plist");
  EXPECT_EQ(*pathOfSimulatedURI("simulated:///a%20b/%C3%A4.plist?x=1#y"), "/a b/\xC3\xA4.plist");
  EXPECT_EQ(*pathOfSimulatedURI("simulated:///50%/a%zz%2"), "/50%/a%zz%2");
}

TEST(SimulatedURI, FailsWithoutAFile) {
  for (const char* uri : {"simulated://", "simulated://host/a", "simulated:///a%00b",
                          "Simulated:///a", "socket://a", ""}) {
    EXPECT_FALSE(pathOfSimulatedURI(uri)) << uri;
  }
}

}  // namespace
}  // namespace commandfilter
