// The libraries that the tool loads: most of its time goes into loading.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "Admtemplate.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class ToolLibraries : public ::testing::Test {
 protected:
  // What the loader says.
  static std::string report(const std::vector<std::string>& arguments,
                            const std::string& input = {}) {
    return runAdmtemplate(arguments, input, {"LD_DEBUG=libs"}).errors;
  }
  static void expectFew(const std::string& report) {
    for (const char* name : {"libcups", "libuv", "libicu", "libedit", "libexpat", "libplist"}) {
      EXPECT_THAT(report, Not(HasSubstr(name)));
    }
  }

  ToolLibraries() {
    writeFile(device_, "<plist><dict><key>ModelName</key><string>M</string></dict></plist>");
  }
  TemporaryFolder folder_;
  std::string device_ = (folder_.path() / "device.plist").string();
};

TEST_F(ToolLibraries, AreFewForADescribedDevice) {
  expectFew(report({"eval", "--expression", "1 + @deviceState", "--service", "DMFDeviceStatus",
                    "--device", device_}));
  expectFew(report({"device", device_}));
  expectFew(report({"repl", "--device", device_}, ":trace 1 + 2\n:device\n"));
}

TEST_F(ToolLibraries, IncludeExpatForAListInAnotherForm) {
  writeFile(device_, "<plist><dict><key>ModelName</key><string>M&#33;</string></dict></plist>");
  EXPECT_THAT(report({"device", device_}), HasSubstr("libexpat"));
}

TEST_F(ToolLibraries, IncludeLibplistForABinaryList) {
  writeFile(device_, std::string("bplist00\xD0\x08", 10) + std::string(6, '\0') + "\x01\x01" +
                         std::string(7, '\0') + "\x01" + std::string(15, '\0') + "\x09");
  EXPECT_THAT(report({"device", device_}), HasSubstr("libplist"));
}

TEST_F(ToolLibraries, IncludeCupsForQueues) {
  EXPECT_THAT(report({"device"}), HasSubstr("libcups"));
}

}  // namespace
}  // namespace commandfilter::testing
