#include "device_io/SystemVersion.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;
using testing::writeFile;

TEST(SystemVersionNumber, IsReadFromTheDigitsAsHexadecimal) {
  constexpr struct {
    const char* version;
    int number;
  } kCases[] = {{"10.6.2", 4194},
                {"10.6.3", 4195},
                // Three digits get a zero.
                {"10.7", 4208},
                {"10.6", 0x1060},
                {"1.2.3", 0x1230},
                // Four digits stay.
                {"10.10", 4112},
                {"10.15", 0x1015},
                // Of five, the last two become a nine.
                {"10.10.1", 4121},
                {"10.6.12", 0x1069},
                // Other lengths give nothing.
                {"", 0},
                {"1", 0},
                {"12", 0},
                {"10.10.10", 0},
                {"...", 0},
                {"123456", 0},
                // The number ends at the first character that is no digit.
                {"10x6", 0x10},
                {"abcd", 0xabcd},
                {"0x1f", 0x1f},
                {"-106", -0x106},
                {"x106", 0},
                {"0000", 0},
                {"12\xC3\xA9", 0x12},
                // Characters count, not their bytes; those outside the basic plane twice.
                {"1\xC3\xA9.23", 1},
                {"1\xF0\x9F\x98\x80.2", 1},
                {"123\xC3\xA9\xC3\xA9", 0x1239}};
  for (const auto& [version, number] : kCases) {
    EXPECT_EQ(systemVersionNumber(version).value_or(0), number) << version;
  }
}

TEST(SystemVersionNumber, TakesAnySpaceThatCMayBegin) {
  EXPECT_EQ(systemVersionNumber(" 1.06").value_or(0), 0x106);
}

// A bundle with a version record.
class SystemVersionRecord : public ::testing::Test {
 protected:
  static constexpr const char* kHead =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>";
  static constexpr const char* kTail = "</dict></plist>\n";

  SystemVersionRecord() { fs::create_directories(root_.path() / "Contents" / "Resources"); }

  void writeInfo(const std::string& entries) const {
    writeFile(root_.path() / "Contents" / "Info.plist", kHead + entries + kTail);
  }
  void namedFolder(const std::string& folder) const {
    writeInfo("<key>SystemVersionFolder</key><string>" + folder + "</string>");
  }
  static void writeRecord(const fs::path& folder, const std::string& value) {
    fs::create_directories(folder);
    writeFile(folder / "SystemVersion.plist",
              std::string(kHead) + "<key>ProductVersion</key>" + value + kTail);
  }
  [[nodiscard]] Ref<Bundle> bundle() const {
    return Ref<Bundle>(*Bundle::bundleWithPath(root_.path().string()));
  }
  // The version that the record gives; "nil" for none.
  [[nodiscard]] std::string version() const {
    const RefPtr<String> version = systemVersionString(*bundle());
    return version ? version->text() : "nil";
  }

  TemporaryFolder root_;
  fs::path resources_ = root_.path() / "Contents" / "Resources";
};

TEST_F(SystemVersionRecord, LiesAmongTheBundlesResources) {
  writeRecord(resources_, "<string>10.6.3</string>");
  EXPECT_EQ(version(), "10.6.3");
}

TEST_F(SystemVersionRecord, LiesInTheFolderThatTheBundleNames) {
  const TemporaryFolder elsewhere;
  writeRecord(resources_, "<string>1.0.0</string>");
  writeRecord(elsewhere.path(), "<string>10.7</string>");
  namedFolder(elsewhere.path().string());
  EXPECT_EQ(version(), "10.7");
}

TEST_F(SystemVersionRecord, LiesInAFolderInsideTheBundle) {
  writeRecord(root_.path() / "Contents" / "System", "<string>10.7</string>");
  namedFolder("Contents/System");
  EXPECT_EQ(version(), "10.7");
}

TEST_F(SystemVersionRecord, LiesBelowTheHomeFolder) {
  const char* home = std::getenv("HOME");
  const std::string before = home != nullptr ? home : "";
  setenv("HOME", root_.path().c_str(), 1);
  writeRecord(root_.path() / "System", "<string>10.7</string>");
  namedFolder("~/System");
  EXPECT_EQ(version(), "10.7");
  writeRecord(root_.path(), "<string>10.8</string>");
  namedFolder("~");
  EXPECT_EQ(version(), "10.8");
  if (home != nullptr) {
    setenv("HOME", before.c_str(), 1);
  } else {
    unsetenv("HOME");
  }
}

TEST_F(SystemVersionRecord, IsLookedForNowhereElseThanInTheNamedFolder) {
  writeRecord(resources_, "<string>10.6.3</string>");
  namedFolder("/nowhere");
  EXPECT_EQ(version(), "nil");
}

TEST_F(SystemVersionRecord, LiesAmongTheResourcesWhenTheNameIsNone) {
  writeRecord(resources_, "<string>10.6.3</string>");
  for (const char* none : {"<integer>1</integer>", "<string></string>"}) {
    writeInfo(std::string("<key>SystemVersionFolder</key>") + none);
    EXPECT_EQ(version(), "10.6.3") << none;
  }
}

TEST_F(SystemVersionRecord, IsNilWithoutAFile) { EXPECT_EQ(version(), "nil"); }

TEST_F(SystemVersionRecord, IsNilWithoutAStringUnderItsKey) {
  for (const char* value : {"<integer>1063</integer>", "<real>10.6</real>", "<true/>",
                            "<array><string>10.6.3</string></array>"}) {
    writeRecord(resources_, value);
    EXPECT_EQ(version(), "nil") << value;
  }
  for (const char* text :
       {"", "no property list", "<plist version=\"1.0\"><string>10.6.3</string></plist>",
        "<plist version=\"1.0\"><dict><key>Product</key><string>10.6.3</string>"
        "</dict></plist>"}) {
    writeFile(resources_ / "SystemVersion.plist", text);
    EXPECT_EQ(version(), "nil") << text;
  }
}

TEST_F(SystemVersionRecord, IsNilWhenItIsNoFile) {
  fs::create_directory(resources_ / "SystemVersion.plist");
  EXPECT_EQ(version(), "nil");
}

}  // namespace
}  // namespace commandfilter
