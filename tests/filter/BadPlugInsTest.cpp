#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "InChild.h"
#include "TestBundles.h"
#include "filter/ACommandFilterPlugInManager.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::addApplication;
using testing::addBundle;
using testing::addBundleWithInfo;
using testing::codeOf;
using testing::isLoaded;
using testing::propertyList;
using testing::runInChild;
using testing::TemporaryFolder;
using testing::writeFile;

const std::string kExecutable = "<key>CFBundleExecutable</key><string>Code</string>";
const std::string kCommands = testing::arrayEntry("SupportedCommands", {"Clean"});
const std::string kGoodInfo = propertyList("<dict>" + kExecutable + kCommands + "</dict>");

// Gives up the rights to read everything. Takes them back when it goes, with what else a change of
// rights takes away: the search for leaks at the end of a process needs it.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    constexpr uid_t kNobody = 65534;
    if (user_ == 0 && seteuid(kNobody) != 0) ADD_FAILURE();
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    EXPECT_EQ(seteuid(user_), 0);
    prctl(PR_SET_DUMPABLE, 1);
  }

 private:
  uid_t user_ = geteuid();
};

// Each test puts something bad into the first folder; a good plug-in for the same command waits in
// the second.
class BadPlugIns : public ::testing::Test {
 protected:
  BadPlugIns() {
    fs::create_directory(bad_);
    addBundle(good_, "Good.bundle", "Second", {"Clean"});
  }

  // A bundle of the echo executor with another information property list.
  [[nodiscard]] fs::path addBad(std::string_view info) const {
    return addBundleWithInfo(bad_, "Bad.bundle", "Echo", info);
  }
  // A good bundle of the echo executor, to be spoiled.
  [[nodiscard]] fs::path addBad() const { return addBad(kGoodInfo); }

  [[nodiscard]] std::string executor() const {
    const fs::path application = addApplication(root_.path(), {bad_.string(), good_.string()});
    const auto bundle = Bundle::bundleWithPath(application.string());
    const auto manager = ACommandFilterPlugInManager::plugInManagerForBundle(Ref<Bundle>(*bundle));
    const Class* found = manager->executorClassForCommand(*String::create("Clean"));
    return std::string(found != nullptr ? found->name : "none");
  }

  TemporaryFolder root_;
  fs::path bad_ = root_.path() / "bad";
  fs::path good_ = root_.path() / "good";
};

TEST_F(BadPlugIns, WouldServeTheCommandIfTheyWereGood) {
  const fs::path bundle = addBad();
  EXPECT_EQ(executor(), "EchoExecutor");
  EXPECT_TRUE(isLoaded(bundle));
}

TEST_F(BadPlugIns, ThatAreNoFoldersAreSkipped) {
  writeFile(bad_ / "plain file", "text");
  writeFile(bad_ / "Plain.bundle", kGoodInfo);
  fs::create_symlink("nowhere", bad_ / "Broken.bundle");
  fs::create_symlink("Cycle.bundle", bad_ / "Cycle.bundle");
  fs::create_symlink("B.bundle", bad_ / "A.bundle");
  fs::create_symlink("A.bundle", bad_ / "B.bundle");
  ASSERT_EQ(mkfifo((bad_ / "Fifo.bundle").c_str(), 0600), 0);
  EXPECT_EQ(executor(), "SecondExecutor");
}

TEST_F(BadPlugIns, ThatAreFoldersWithoutTheLayoutAreSkipped) {
  fs::create_directory(bad_ / "Empty.bundle");
  fs::create_directories(bad_ / "NoList.bundle" / "Contents" / "Linux");
  fs::create_directories(bad_ / "ListIsFolder.bundle" / "Contents" / "Info.plist");
  fs::create_directory_symlink(".", bad_ / "Itself.bundle");
  EXPECT_EQ(executor(), "SecondExecutor");
}

TEST_F(BadPlugIns, WithAFifoForThePropertyListDoNotBlock) {
  const fs::path bundle = addBad();
  fs::remove(bundle / "Contents" / "Info.plist");
  ASSERT_EQ(mkfifo((bundle / "Contents" / "Info.plist").c_str(), 0600), 0);
  EXPECT_EQ(executor(), "SecondExecutor");
}

TEST_F(BadPlugIns, WithABrokenPropertyListAreSkipped) {
  for (std::size_t length = 0; length + 10 < kGoodInfo.size(); length += 7) {
    const fs::path bundle = addBad(kGoodInfo.substr(0, length));
    EXPECT_EQ(executor(), "SecondExecutor") << length;
    fs::remove_all(bundle);
  }
}

TEST_F(BadPlugIns, WithAPropertyListOfAnotherKindAreSkipped) {
  for (const std::string& content :
       {std::string("<array>" + kCommands + "</array>"), std::string("<string>Clean</string>"),
        std::string("<true/>"), std::string(), std::string("<unknown/>"),
        "<dict><key>CFBundleExecutable</key><integer>1</integer>" + kCommands + "</dict>",
        "<dict><key>CFBundleExecutable</key><array/>" + kCommands + "</dict>",
        "<dict>" + kExecutable + "<key>NSPrincipalClass</key><integer>1</integer>" + kCommands +
            "</dict>"}) {
    const fs::path bundle = addBad(propertyList(content));
    EXPECT_EQ(executor(), "SecondExecutor") << content;
    EXPECT_FALSE(isLoaded(bundle));
    fs::remove_all(bundle);
  }
}

TEST_F(BadPlugIns, WithAnExecutableOutsideTheBundleAreSkipped) {
  const std::string code = testing::builtCode("Echo").string();
  for (const std::string& name : {std::string("../Linux/Code"), code, std::string(".."),
                                  std::string("."), std::string(), std::string("Missing")}) {
    const fs::path bundle = addBad(propertyList("<dict><key>CFBundleExecutable</key><string>" +
                                                name + "</string>" + kCommands + "</dict>"));
    EXPECT_EQ(executor(), "SecondExecutor") << name;
    fs::remove_all(bundle);
  }
}

TEST_F(BadPlugIns, With50LevelsInThePropertyListStillServe) {
  std::string nested = "<string>leaf</string>";
  for (int i = 0; i < 50; ++i) {
    nested =
        (i % 2 == 0 ? "<array>" + nested + "</array>" : "<dict><key>k</key>" + nested + "</dict>");
  }
  const fs::path bundle =
      addBad(propertyList("<dict><key>Deep</key>" + nested + kExecutable + kCommands + "</dict>"));
  EXPECT_EQ(executor(), "EchoExecutor");
}

TEST_F(BadPlugIns, WithAMillionLevelsInThePropertyListAreSkipped) {
  constexpr int kLevels = 1'000'000;
  std::string deep;
  for (int i = 0; i < kLevels; ++i) deep.append("<array>");
  const fs::path bundle =
      addBad(propertyList("<dict><key>Deep</key>" + deep + kExecutable + kCommands + "</dict>"));
  EXPECT_EQ(executor(), "SecondExecutor");
}

TEST_F(BadPlugIns, With20MegabytesOfPropertyListStillServe) {
  constexpr std::size_t kSize = 20'000'000;
  const fs::path bundle =
      addBad(propertyList("<dict><key>Long</key><string>" + std::string(kSize, 'x') + "</string>" +
                          kExecutable + kCommands + "</dict>"));
  EXPECT_EQ(executor(), "EchoExecutor");
}

TEST_F(BadPlugIns, With20MegabytesOfBrokenPropertyListAreSkipped) {
  constexpr std::size_t kSize = 20'000'000;
  const fs::path bundle = addBad(std::string(kSize, '\0'));
  EXPECT_EQ(executor(), "SecondExecutor");
  writeFile(bundle / "Contents" / "Info.plist", "bplist00" + std::string(kSize, '\xFF'));
  EXPECT_EQ(executor(), "SecondExecutor");
}

TEST_F(BadPlugIns, WithoutCodeAreSkipped) {
  const fs::path bundle = addBad();
  fs::remove(codeOf(bundle));
  EXPECT_EQ(executor(), "SecondExecutor");
}

TEST_F(BadPlugIns, WhoseCodeIsNoRegularFileAreSkipped) {
  const fs::path bundle = addBad();
  fs::remove(codeOf(bundle));
  ASSERT_EQ(mkfifo(codeOf(bundle).c_str(), 0700), 0);
  EXPECT_EQ(executor(), "SecondExecutor");
  fs::remove(codeOf(bundle));
  fs::create_directory(codeOf(bundle));
  EXPECT_EQ(executor(), "SecondExecutor");
  fs::remove(codeOf(bundle));
  fs::create_symlink("Code", codeOf(bundle));
  EXPECT_EQ(executor(), "SecondExecutor");
}

TEST_F(BadPlugIns, WhoseCodeIsNoSharedLibraryAreSkipped) {
  const fs::path bundle = addBad();
  const std::string program = fs::read_symlink("/proc/self/exe").string();
  for (const std::string& code :
       {std::string(), std::string("#!/bin/sh\n"), std::string(100'000, '\0'),
        "\x7F"
        "ELF" +
            std::string(100'000, '\xFF'),
        testing::readFile(program)}) {
    writeFile(codeOf(bundle), code);
    EXPECT_EQ(executor(), "SecondExecutor") << code.size();
  }
}

TEST_F(BadPlugIns, WhoseCodeIsCutShortAreSkipped) {
  const fs::path bundle = addBad();
  const std::string code = testing::readFile(codeOf(bundle));
  // Tables of section names may be missing at the end; what is loaded lies before them.
  for (const std::size_t part : {100U, 10U, 5U, 3U, 2U}) {
    writeFile(codeOf(bundle), std::string_view(code).substr(0, code.size() / 5 / part));
    runInChild([this] { EXPECT_EQ(executor(), "SecondExecutor"); });
  }
}

TEST_F(BadPlugIns, WithoutAnEntryPointAreSkipped) {
  const fs::path bundle = addBundle(bad_, "Bad.bundle", "NoEntryPoint", {"Clean"});
  EXPECT_EQ(executor(), "SecondExecutor");
  EXPECT_FALSE(isLoaded(bundle));
}

TEST_F(BadPlugIns, ThatCannotBeReadAreSkipped) {
  const fs::path folder = addBundle(bad_, "Folder.bundle", "Echo", {"Clean"});
  const fs::path list = addBundle(bad_, "List.bundle", "Echo", {"Clean"});
  const fs::path code = addBundle(bad_, "Code.bundle", "Echo", {"Clean"});
  fs::permissions(folder, fs::perms::none);
  fs::permissions(list / "Contents" / "Info.plist", fs::perms::none);
  fs::permissions(codeOf(code), fs::perms::none);
  const fs::path application = addApplication(root_.path(), {bad_.string(), good_.string()});
  runInChild([&] {
    const OrdinaryUser user;
    // Where even the temporary folder is out of reach, nothing can be told.
    if (testing::readFile(application / "Contents" / "Info.plist").empty()) return;
    const auto bundle = Bundle::bundleWithPath(application.string());
    const auto manager = ACommandFilterPlugInManager::plugInManagerForBundle(Ref<Bundle>(*bundle));
    const Class* found = manager->executorClassForCommand(*String::create("Clean"));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->name, "SecondExecutor");
  });
  fs::permissions(folder, fs::perms::owner_all);
}

}  // namespace
}  // namespace commandfilter
