// A template, from lp to the device's answers over the side channel.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "integration/InstalledProduct.h"
#include "integration/PrivateScheduler.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::Contains;

constexpr const char* kTemplate = R"(<plist><dict>
<key>TemplateConstants</key><dict><key>Unknown</key><string>"unknown"</string></dict>
<key>TemplateValues</key><dict>
  <key>Model</key><dict>
    <key>ServiceName</key><string>DMFDeviceStatus</string>
    <key>Value</key><string>@humanReadableModelName or $Unknown</string>
  </dict>
  <key>State</key><dict>
    <key>ServiceName</key><string>DMFDeviceStatus</string>
    <key>Value</key><string>@deviceState or $Unknown</string>
  </dict>
  <key>Line</key><dict>
    <key>ServiceName</key><string>DMFDeviceStatus</string>
    <key>Value</key><string>[Model] + " " + {model}.serialNumber + " is " + [State]</string>
  </dict>
  <key>Broken</key><dict>
    <key>ServiceName</key><string>DMFDeviceStatus</string>
    <key>Value</key><string>{model}.serialNumber.a.b</string>
  </dict>
</dict></dict></plist>)";

// The device tells its ID and, to one of the objects that are asked for, its state.
constexpr const char* kBackend =
    "GET_DEVICE_ID OK MFG:Acme;MDL:Q7;DES:Acme Quill 7;SN:N42;\n"
    "SNMP_GET:.1.3.6.1.2.1.25.3.5.1.1.1 OK .1.3.6.1.2.1.25.3.5.1.1.1\\x003\n"
    "SNMP_GET OK .1.3.6.1.2.1.25.3.5.1.1.1\\x00\n";

TEST(TemplateJob, AnswersFromTheDeviceInTheLog) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.path() / "template.plist";
  writeFile(path, kTemplate);
  const InstalledProduct product(folder.path() / "prefix");
  product.addPlugIn("Template", {"Template values"});
  const PrivateScheduler scheduler(
      {{"TEST_TEMPLATE", path.string()}, {"TEST_KEYS", "Line,Broken,Nowhere"}});
  scheduler.addFilter(product.filter());
  std::filesystem::path script = scheduler.addRecordingQueue("queue");
  script += ".script";
  writeFile(script, kBackend);
  const std::filesystem::path commands = folder.path() / "commands";
  writeFile(commands, "#CUPS-COMMAND\nTemplate values\n");

  const int job = scheduler.submit("queue", commands);
  EXPECT_EQ(scheduler.wait(job), "completed");
  std::vector<std::string> lines;
  for (const PrivateScheduler::LogLine& line : scheduler.log(job)) lines.push_back(line.text);
  EXPECT_THAT(lines, Contains("Line = Acme Quill 7 N42 is idle"));
  EXPECT_THAT(lines, Contains("Broken = (null)"));
  EXPECT_THAT(lines, Contains("Nowhere = (null)"));
}

}  // namespace
}  // namespace commandfilter::testing
