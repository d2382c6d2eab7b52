#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "TestBundles.h"
#include "process/Echo.h"
#include "process/FilterApplication.h"
#include "support/File.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::addBundle;
using testing::FilterApplication;
using testing::Job;
using testing::kEcho;
using testing::Outcome;
using testing::propertyList;
using testing::writeFile;

class BadInput : public ::testing::Test {
 protected:
  void expectErrors(const std::string& commandFile, const std::string& errors) const {
    const Outcome outcome = application_.run(Job(commandFile));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, errors);
    EXPECT_EQ(outcome.output, "");
  }

  FilterApplication application_;
};

TEST_F(BadInput, MayHoldNUL) {
  application_.addPlugIn("Echo");
  // What follows NUL counts, so only the last line is the command.
  expectErrors("#CUPS-COMMAND\nEcho\0\n\0\n\0Echo\nEcho\n"s, kEcho);
  expectErrors("\0#CUPS-COMMAND\0\nEcho\n"s, kEcho);
}

TEST_F(BadInput, MaySeparateLinesByAnythingThatUnicodeNames) {
  application_.addPlugIn("Echo");
  expectErrors(
      "#CUPS-COMMAND\nEcho\rEcho\vEcho\fEcho\xC2\x85"
      "Echo\xE2\x80\xA8"
      "Echo\xE2\x80\xA9"
      "Echo",
      kEcho + kEcho + kEcho + kEcho + kEcho + kEcho + kEcho);
}

TEST_F(BadInput, MayBeAnyKindOfText) {
  application_.addPlugIn("Echo");
  for (const std::string& bytes : {"\xFF"s, "\xC3"s, "\xED\xA0\x80"s, "\xF5\x80\x80\x80"s}) {
    expectErrors("#CUPS-COMMAND\nEcho\n" + bytes, "");
  }
}

TEST_F(BadInput, MayLieAmongThePlugIns) {
  const fs::path folder = application_.addFolder();
  fs::create_symlink("nowhere", folder / "Broken.bundle");
  fs::create_symlink("Cycle.bundle", folder / "Cycle.bundle");
  fs::create_directory_symlink(".", folder / "Itself.bundle");
  fs::create_directory_symlink("..", folder / "Above.bundle");
  ASSERT_EQ(mkfifo((folder / "Fifo.bundle").c_str(), 0600), 0);
  writeFile(folder / "plain file", "text");
  fs::create_directory(folder / "Empty.bundle");
  fs::permissions(addBundle(folder, "Unreadable.bundle", "Second", {"Other"}), fs::perms::none);
  const fs::path listless = addBundle(folder, "Listless.bundle", "Second", {"Echo"});
  fs::remove(listless / "Contents" / "Info.plist");
  ASSERT_EQ(mkfifo((listless / "Contents" / "Info.plist").c_str(), 0600), 0);
  const fs::path codeless = addBundle(folder, "Codeless.bundle", "Second", {"Echo"});
  fs::remove(testing::codeOf(codeless));
  const fs::path cut = addBundle(folder, "Cut.bundle", "Second", {"Echo"});
  fs::resize_file(testing::codeOf(cut), 5000);
  application_.addPlugIn("Echo");
  expectErrors("#CUPS-COMMAND\nEcho\nUnknown\n", kEcho);
  fs::permissions(folder / "Unreadable.bundle", fs::perms::owner_all);
}

TEST_F(BadInput, MayBeThePropertyListOfTheApplication) {
  application_.addBuiltInPlugIn("Echo");
  const fs::path list = application_.contents() / "Info.plist";
  std::string deep = "<string>leaf</string>";
  for (int i = 0; i < 50; ++i) deep = "<array>" + deep + "</array>";
  std::string deeper;
  for (int i = 0; i < 1'000'000; ++i) deeper.append("<dict><key>k</key>");
  for (const std::string& text :
       {""s, "<plist><dict><key>PlugInLocations</key><arr"s, propertyList("<array/>"),
        propertyList("<dict><key>PlugInLocations</key>" + deep + "</dict>"), deeper,
        propertyList("<dict><key>PlugInLocations</key><array><string>" +
                     std::string(20'000'000, 'x') + "</string></array></dict>"),
        std::string(20'000'000, '<')}) {
    writeFile(list, text);
    expectErrors("#CUPS-COMMAND\nEcho\n", kEcho);
  }
  fs::remove(list);
  ASSERT_EQ(mkfifo(list.c_str(), 0600), 0);
  expectErrors("#CUPS-COMMAND\nEcho\n", kEcho);
}

}  // namespace
}  // namespace commandfilter
