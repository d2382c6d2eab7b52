// admtemplate device with devices that are described in files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "Admtemplate.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::HasSubstr;

constexpr std::string_view kDevice = R"(<plist version="1.0"><dict>
<key>DeviceID</key><string>MFG:Acme;MDL:M1;</string>
<key>VendorName</key><string>Acme</string>
<key>ModelName</key><string>M1</string>
<key>ConnectionType</key><string>Network</string>
<key>ConnectionParams</key><dict><key>IPAddress</key><string>192.0.2.1</string></dict>
<key>ModelInfo</key><dict><key>Capabilities</key><dict><key>duplex</key><true/></dict></dict>
<key>StatusServices</key><dict>
  <key>DMFSuppliesStatus</key><dict>
    <key>Messages</key><dict>
      <key>suppliesIdentifiers</key><array><string>K</string><string>C</string></array>
      <key>supplyLevelForIdentifier:</key><dict><key>K</key><integer>40</integer></dict>
      <key>since</key><date>2020-01-31T12:00:00Z</date>
      <key>raw</key><data>AP8=</data>
      <key>sum:of:</key><real>2.5</real>
    </dict>
    <key>Features</key><dict><key>ink</key><dict>
      <key>Value</key><string>present &amp; &lt;full&gt;</string>
      <key>Identifiers</key><array><string>K</string><string>C</string></array>
      <key>Properties</key><dict><key>level</key><dict>
        <key>Value</key><array><integer>40</integer><dict><key>$null</key><true/></dict></array>
        <key>Identifiers</key><dict><key>K</key><integer>40</integer></dict>
      </dict></dict>
    </dict></dict>
  </dict>
  <key>Own</key><dict><key>Messages</key><dict><key>answer</key><false/></dict></dict>
</dict></dict></plist>
)";

class DeviceCommand : public ::testing::Test {
 protected:
  DeviceCommand() { writeFile(device_, kDevice); }
  [[nodiscard]] static std::string asked(const std::string& device, const std::string& service,
                                         const std::string& expression) {
    return runAdmtemplate({"eval", "--device", device, "--service", service, "--expression",
                           expression, "--format", "json"})
        .output;
  }

  TemporaryFolder folder_;
  std::string device_ = (folder_.path() / "a device.plist").string();
  std::string saved_ = (folder_.path() / "saved.plist").string();
};

TEST_F(DeviceCommand, ShowsWhatIsKnownAsExpressionsWriteIt) {
  const ChildResult result = runAdmtemplate({"device", device_});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "URI:         simulated://" + folder_.path().string() +
                               "/a%20device.plist\n"
                               "Device ID:   MFG:Acme;MDL:M1;\n"
                               "Vendor:      Acme\n"
                               "Model:       M1\n"
                               "Connection:  Network\n"
                               "  IPAddress: 192.0.2.1\n"
                               "\n"
                               "Table Capabilities\n"
                               "  duplex = true\n"
                               "\n"
                               "Service DMFSuppliesStatus\n"
                               "  @suppliesIdentifiers = [\"K\",\"C\"]\n"
                               "  @supplyLevelForIdentifier: of K = 40\n"
                               "  @since = {\"$date\":\"2020-01-31T12:00:00Z\"}\n"
                               "  @raw = {\"$data\":\"AP8=\"}\n"
                               "  @sum:of: = 2.5\n"
                               "  {ink} = \"present & <full>\"\n"
                               "  {ink}.level = [40,null]\n"
                               "  {ink}[K].level = 40\n"
                               "\n"
                               "Service Own\n"
                               "  @answer = false\n");
}

TEST_F(DeviceCommand, SavesADescriptionThatAnswersTheSame) {
  const ChildResult result = runAdmtemplate({"device", device_, "--format", "plist"});
  EXPECT_EQ(result.exitStatus, 0);
  writeFile(saved_, result.output);
  for (const char* expression :
       {"@suppliesIdentifiers", "_Filter(@suppliesIdentifiers, @supplyLevelForIdentifier: ne @nil)",
        "@since", "@raw", "{ink}", "{ink}.level", "{ink}[K].level", "{ink}[C].level", "{none}",
        "@service _CallMethod(\"sum:of:\", 1, 2)", "@missing"}) {
    const std::string answer = asked(device_, "DMFSuppliesStatus", expression);
    EXPECT_EQ(asked(saved_, "DMFSuppliesStatus", expression), answer) << expression;
  }
  EXPECT_THAT(asked(saved_, "DMFSuppliesStatus", "{ink}.level"), HasSubstr("null"));
  EXPECT_EQ(asked(saved_, "Own", "@answer"), asked(device_, "Own", "@answer"));
  // Once more, and nothing is lost.
  EXPECT_EQ(runAdmtemplate({"device", saved_, "--format", "plist"}).output, result.output);
}

TEST_F(DeviceCommand, TellsOfADeviceWithoutServices) {
  writeFile(device_, "<plist><dict><key>ServiceState</key><integer>3</integer></dict></plist>");
  EXPECT_THAT(runAdmtemplate({"device", device_}).output, HasSubstr("it has no services"));
}

TEST_F(DeviceCommand, ExplainsWhatItCannotUse) {
  const auto expectRefusal = [](const std::string& device, const std::string& reason) {
    const ChildResult result = runAdmtemplate(
        {"device", device}, "", {"CUPS_SERVER=/nonexistent", "CUPS_SERVERBIN=/nonexistent"});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr(reason));
  };
  expectRefusal(saved_, "there is no such file");
  expectRefusal("no-such-queue", "there is no such file and no such queue");
  expectRefusal("nix://host", "CUPS has no backend /nonexistent/backend/nix");
  expectRefusal("../x:y", "this is no device URI");
  expectRefusal(":", "this is no device URI");
  expectRefusal("simulated:///nonexistent", "/nonexistent");
  writeFile(saved_,
            "<plist><dict><key>Resolution</key><dict><key>Outcome</key>"
            "<string>fail</string></dict></dict></plist>");
  expectRefusal(saved_, "does not resolve");
}

TEST_F(DeviceCommand, NamesKeysThatADescriptionHasInVain) {
  writeFile(device_, R"(<plist><dict>
<key>Vendorname</key><string>Acme</string>
<key>Comment</key><string>mine</string>
<key>Resolution</key><dict><key>Delays</key><integer>1</integer></dict>
<key>ConnectionParams</key><dict><key>Any</key><string>1</string></dict>
<key>StatusServices</key><dict>
  <key>Own</key><dict>
    <key>answer</key><integer>1</integer>
    <key>Messages</key><dict><key>any</key><integer>1</integer></dict>
    <key>Features</key><dict><key>ink</key><dict>
      <key>value</key><integer>1</integer>
      <key>Properties</key><dict><key>level</key><dict><key>Identifier</key><dict/></dict></dict>
    </dict></dict>
  </dict>
</dict></dict></plist>)");
  std::string notes;
  for (const char* note :
       {"Vendorname is ignored; write VendorName",
        "Comment is ignored; a device has DeviceID, ServiceState, URI, ConnectionType, VendorName, "
        "ModelName, ConnectionParams, Resolution, ModelInfo, StatusServices",
        "Resolution > Delays is ignored; write Delay",
        "StatusServices > Own > answer is ignored; a service has Messages, Features",
        "StatusServices > Own > Features > ink > value is ignored; write Value",
        "StatusServices > Own > Features > ink > Properties > level > Identifier is ignored; "
        "write Identifiers"}) {
    notes += "admtemplate: device " + device_ + ": " + note + '\n';
  }
  const ChildResult shown = runAdmtemplate({"device", device_});
  EXPECT_EQ(shown.exitStatus, 0);
  EXPECT_EQ(shown.errors, notes);
  const ChildResult evaluated = runAdmtemplate(
      {"eval", "--device", device_, "--strict", "--format", "json", "--expression", "1"});
  EXPECT_EQ(evaluated.exitStatus, 0);
  EXPECT_EQ(evaluated.output, "{\n  \"value\": 1\n}\n");
  EXPECT_EQ(evaluated.errors, notes);
  const ChildResult prompt = runAdmtemplate({"repl", "--device", device_, "--strict"}, "1\n");
  EXPECT_EQ(prompt.exitStatus, 0);
  EXPECT_EQ(prompt.output, "1\n");
  EXPECT_EQ(prompt.errors, notes);
}

TEST_F(DeviceCommand, NamesTheFirstOfVeryManyKeysInVain) {
  std::string keys;
  for (int i = 0; i < 1000; ++i) keys += "<key>Any" + std::to_string(i) + "</key><true/>";
  writeFile(device_, "<plist><dict>" + keys + "</dict></plist>");
  const std::string errors = runAdmtemplate({"device", device_}).errors;
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 20);
}

TEST_F(DeviceCommand, NamesTheFileThePlaceAndTheRemedyOfABrokenDescription) {
  writeFile(device_, "<plist><dict>\n<key>URI</string></dict></plist>");
  EXPECT_EQ(runAdmtemplate({"device", device_}).errors,
            "admtemplate: device " + device_ +
                ": line 2, column 11: mismatched tag; repair the XML there\n");
  writeFile(device_, "<plist><dict><key>StatusServices</key><array/></dict></plist>");
  EXPECT_EQ(runAdmtemplate({"device", device_}).errors,
            "admtemplate: device " + device_ + ": StatusServices is not a dictionary\n");
  EXPECT_EQ(runAdmtemplate({"device", "simulated://x"}).errors,
            "admtemplate: device simulated://x: names no file: write "
            "simulated:///path/of/the/description\n");
}

TEST_F(DeviceCommand, SaysWhenAPathCannotBeFollowed) {
  // A link to itself cannot be followed by root either.
  std::filesystem::create_symlink(saved_, saved_);
  const ChildResult result = runAdmtemplate({"device", saved_});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors, "admtemplate: device " + saved_ +
                               ": cannot be opened: Too many levels of symbolic links\n");
}

TEST_F(DeviceCommand, SaysWhatCanBeNamedWithoutAScheduler) {
  const ChildResult result =
      runAdmtemplate({"device"}, "", {"CUPS_SERVER=/nonexistent", "CUPS_SERVERBIN=/nonexistent"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, HasSubstr("no queues"));
  EXPECT_THAT(result.output, HasSubstr("URIs may begin with: none"));
}

}  // namespace
}  // namespace commandfilter::testing
