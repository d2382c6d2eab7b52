#include "filter/ACommandFilterPlugInManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "TestBundles.h"
#include "runtime/ClassRegistry.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::addApplication;
using testing::addBundle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::isLoaded;
using testing::TemporaryFolder;

class PlugInManager : public ::testing::Test {
 protected:
  // A plug-in folder of the application, made empty.
  fs::path addFolder(const std::string& name) {
    const fs::path folder = root_.path() / name;
    fs::create_directories(folder);
    locations_.push_back(folder.string());
    return folder;
  }
  fs::path builtIn() {
    const fs::path folder = root_.path() / "Test.app" / "Contents" / "PlugIns";
    fs::create_directories(folder);
    return folder;
  }
  // A manager of the application as it is now.
  Ref<ACommandFilterPlugInManager> manager() {
    const auto bundle = Bundle::bundleWithPath(addApplication(root_.path(), locations_).string());
    return ACommandFilterPlugInManager::plugInManagerForBundle(Ref<Bundle>(*bundle));
  }
  static std::string_view executor(ACommandFilterPlugInManager& manager, const char* command) {
    const Class* found = manager.executorClassForCommand(*String::create(command));
    return found != nullptr ? found->name : "none";
  }

  TemporaryFolder root_;
  std::vector<std::string> locations_;
};

TEST_F(PlugInManager, FindsTheExecutorOfACommandWhateverItsCase) {
  addBundle(addFolder("A"), "Echo.bundle", "Echo", {"Echo Me"});
  const auto manager = this->manager();
  EXPECT_EQ(executor(*manager, "Echo Me"), "EchoExecutor");
  EXPECT_EQ(executor(*manager, "ECHO ME"), "EchoExecutor");
  EXPECT_EQ(executor(*manager, "echo me"), "EchoExecutor");
}

TEST_F(PlugInManager, LowerCasesByUnicodeOnBothSides) {
  addBundle(addFolder("A"), "Echo.bundle", "Echo",
            {"\xC3\x89TAT", "\xCF\x83\xCE\xAC\xCF\x82", "\xF0\x90\x90\x80"});
  const auto manager = this->manager();
  EXPECT_EQ(executor(*manager, "\xC3\xA9tat"), "EchoExecutor");
  EXPECT_EQ(executor(*manager, "\xCE\xA3\xCE\x86\xCE\xA3"), "EchoExecutor");
  EXPECT_EQ(executor(*manager, "\xF0\x90\x90\xA8"), "EchoExecutor");
  EXPECT_EQ(executor(*manager, "etat"), "none");
}

TEST_F(PlugInManager, MatchesTheWholeLine) {
  const fs::path folder = addFolder("A");
  addBundle(folder, "Echo.bundle", "Echo", {"Clean"});
  addBundle(folder, "Second.bundle", "Second", {"Clean Head 1"});
  const auto manager = this->manager();
  EXPECT_EQ(executor(*manager, "clean"), "EchoExecutor");
  EXPECT_EQ(executor(*manager, "clean head 1"), "SecondExecutor");
  EXPECT_EQ(executor(*manager, "clean head"), "none");
  EXPECT_EQ(executor(*manager, "clean  head 1"), "none");
  EXPECT_EQ(executor(*manager, "clean head 1 "), "none");
  EXPECT_EQ(executor(*manager, "cle"), "none");
  EXPECT_EQ(executor(*manager, ""), "none");
}

TEST_F(PlugInManager, PrefersThePlugInOfTheFirstFolder) {
  addBundle(addFolder("B"), "Echo.bundle", "Echo", {"CLEAN"});
  addBundle(addFolder("A"), "Second.bundle", "Second", {"clean"});
  for (const char* command : {"CLEAN", "clean", "Clean"}) {
    EXPECT_EQ(executor(*manager(), command), "EchoExecutor") << command;
  }
}

TEST_F(PlugInManager, PrefersAnExternalPlugInToABuiltInOne) {
  addBundle(builtIn(), "Echo.bundle", "Echo", {"Clean", "Test"});
  addBundle(addFolder("A"), "Second.bundle", "Second", {"clean"});
  const auto manager = this->manager();
  EXPECT_EQ(executor(*manager, "Test"), "EchoExecutor");
  EXPECT_EQ(executor(*manager, "Clean"), "SecondExecutor");
}

TEST_F(PlugInManager, LoadsOnlyUntilTheCommandIsKnown) {
  const fs::path first = addBundle(addFolder("A"), "Echo.bundle", "Echo", {"Clean"});
  const fs::path second = addBundle(addFolder("B"), "Second.bundle", "Second", {"Test"});
  const fs::path third = addBundle(builtIn(), "Nil.bundle", "Result", {"Result"});
  const auto manager = this->manager();
  EXPECT_FALSE(isLoaded(first));
  EXPECT_EQ(executor(*manager, "Clean"), "EchoExecutor");
  EXPECT_TRUE(isLoaded(first));
  EXPECT_FALSE(isLoaded(second));
  EXPECT_EQ(executor(*manager, "Clean"), "EchoExecutor");
  EXPECT_FALSE(isLoaded(second));
  EXPECT_EQ(executor(*manager, "Test"), "SecondExecutor");
  EXPECT_TRUE(isLoaded(second));
  EXPECT_FALSE(isLoaded(third));
}

TEST_F(PlugInManager, LoadsEveryPlugInForAnUnknownCommandAndNeverLooksAgain) {
  const fs::path folder = addFolder("A");
  const fs::path first = addBundle(folder, "Echo.bundle", "Echo", {"Clean"});
  const fs::path second = addBundle(folder, "Second.bundle", "Second", {"Test"});
  const auto manager = this->manager();
  EXPECT_EQ(executor(*manager, "Unknown"), "none");
  EXPECT_TRUE(isLoaded(first));
  EXPECT_TRUE(isLoaded(second));
  EXPECT_EQ(executor(*manager, "Clean"), "EchoExecutor");
  const fs::path late = addBundle(folder, "Late.bundle", "Result", {"Unknown"});
  EXPECT_EQ(executor(*manager, "Unknown"), "none");
  EXPECT_FALSE(isLoaded(late));
}

TEST_F(PlugInManager, VisitsEachPathOnceEvenWhenItServedNothing) {
  const fs::path folder = addFolder("A");
  const fs::path bundle = addBundle(folder, "Echo.bundle", "NotAnExecutor", {"Clean"});
  const auto manager = this->manager();
  EXPECT_EQ(executor(*manager, "Clean"), "none");
  fs::remove_all(bundle);
  addBundle(folder, "Echo.bundle", "Echo", {"Clean"});
  EXPECT_EQ(executor(*manager, "Clean"), "none");
}

TEST_F(PlugInManager, KeepsACommandThatIsKnownAlready) {
  const fs::path folder = addFolder("A");
  const fs::path first = addBundle(folder, "Echo.bundle", "Echo", {"Clean", "CLEAN", "clean"});
  const fs::path second = addBundle(folder, "Second.bundle", "Second", {"clean", "Test"});
  const auto manager = this->manager();
  manager->cacheExecutorsForPlugin(first.string());
  manager->cacheExecutorsForPlugin(second.string());
  ASSERT_NE(manager->cachedExecutorForCommand("clean"), nullptr);
  EXPECT_EQ(manager->cachedExecutorForCommand("clean")->name, "EchoExecutor");
  EXPECT_EQ(manager->cachedExecutorForCommand("test")->name, "SecondExecutor");
}

TEST_F(PlugInManager, CachesUnderLowerCaseOnly) {
  const fs::path bundle = addBundle(addFolder("A"), "Echo.bundle", "Echo", {"Clean"});
  const auto manager = this->manager();
  EXPECT_EQ(manager->cachedExecutorForCommand("clean"), nullptr);
  manager->cacheExecutorsForPlugin(bundle.string());
  EXPECT_NE(manager->cachedExecutorForCommand("clean"), nullptr);
  EXPECT_EQ(manager->cachedExecutorForCommand("Clean"), nullptr);
}

TEST_F(PlugInManager, LoadsNothingForACachedLookup) {
  const fs::path bundle = addBundle(addFolder("A"), "Echo.bundle", "Echo", {"Clean"});
  EXPECT_EQ(manager()->cachedExecutorForCommand("clean"), nullptr);
  EXPECT_FALSE(isLoaded(bundle));
}

TEST_F(PlugInManager, UnloadsABundleWhosePrincipalClassDoesNotConform) {
  const fs::path bundle = addBundle(addFolder("A"), "A.bundle", "NotAnExecutor", {"Clean"});
  addBundle(addFolder("B"), "B.bundle", "Echo", {"Clean"});
  EXPECT_EQ(executor(*manager(), "Clean"), "EchoExecutor");
  EXPECT_FALSE(isLoaded(bundle));
  EXPECT_EQ(classNamed("NotAnExecutor"), nullptr);
}

TEST_F(PlugInManager, TreatsCodeOfAnotherInterfaceVersionAsNoExecutor) {
  const fs::path bundle = addBundle(addFolder("A"), "A.bundle", "OtherVersion", {"Clean"});
  addBundle(addFolder("B"), "B.bundle", "Echo", {"Clean"});
  EXPECT_EQ(executor(*manager(), "Clean"), "EchoExecutor");
  EXPECT_FALSE(isLoaded(bundle));
  EXPECT_EQ(classNamed("OtherVersionExecutor"), nullptr);
}

TEST_F(PlugInManager, KeepsAnExecutorLoadedThatDeclaresNoCommand) {
  const fs::path folder = addFolder("A");
  const std::string executable = "<key>CFBundleExecutable</key><string>Code</string>";
  const std::vector<std::string> contents{
      "",
      testing::arrayEntry("SupportedCommands", {}),
      "<key>SupportedCommands</key><string>Clean</string>",
      "<key>SupportedCommands</key><dict><key>Clean</key><true/></dict>",
      "<key>SupportedCommands</key><array><integer>1</integer><true/></array>",
  };
  std::vector<fs::path> bundles;
  for (const std::string& content : contents) {
    bundles.push_back(testing::addBundleWithInfo(
        folder, std::to_string(bundles.size()), "Echo",
        testing::propertyList("<dict>" + executable + content + "</dict>")));
  }
  EXPECT_EQ(executor(*manager(), "Clean"), "none");
  for (const fs::path& bundle : bundles) EXPECT_TRUE(isLoaded(bundle)) << bundle;
}

TEST_F(PlugInManager, OverlooksEntriesThatAreNoStrings) {
  testing::addBundleWithInfo(
      addFolder("A"), "A.bundle", "Echo",
      testing::propertyList("<dict><key>CFBundleExecutable</key><string>Code</string>"
                            "<key>SupportedCommands</key><array><integer>1</integer><array/>"
                            "<string>Clean</string></array></dict>"));
  const auto manager = this->manager();
  EXPECT_EQ(executor(*manager, "1"), "none");
  EXPECT_EQ(executor(*manager, "Clean"), "EchoExecutor");
}

TEST_F(PlugInManager, TakesTheClassThatThePropertyListNames) {
  const auto info = [](const char* principalClass) {
    return testing::propertyList(
        std::string("<dict><key>CFBundleExecutable</key><string>Code</string>"
                    "<key>NSPrincipalClass</key><string>") +
        principalClass + "</string>" + testing::arrayEntry("SupportedCommands", {"Clean"}) +
        "</dict>");
  };
  const fs::path unfit = testing::addBundleWithInfo(addFolder("A"), "A.bundle", "Service",
                                                    info("ACommandFilterGoodService"));
  const fs::path missing =
      testing::addBundleWithInfo(addFolder("B"), "B.bundle", "Service", info("NoSuchClass"));
  testing::addBundleWithInfo(addFolder("C"), "C.bundle", "Service", info("ServiceExecutor"));
  EXPECT_EQ(executor(*manager(), "Clean"), "ServiceExecutor");
  EXPECT_FALSE(isLoaded(unfit));
  EXPECT_FALSE(isLoaded(missing));
}

TEST_F(PlugInManager, BelongsToTheBundleOfTheProgram) {
  const auto manager = ACommandFilterPlugInManager::plugInManager();
  EXPECT_EQ(fs::path(manager->pluginManagerBundle()->bundlePath()),
            fs::read_symlink("/proc/self/exe").parent_path());
}

TEST_F(PlugInManager, IsNewOnEveryCall) {
  const auto first = ACommandFilterPlugInManager::plugInManager();
  const auto second = ACommandFilterPlugInManager::plugInManager();
  EXPECT_NE(first.get(), second.get());
}

TEST_F(PlugInManager, SharesNothingWithAnotherManager) {
  addBundle(addFolder("A"), "Echo.bundle", "Echo", {"Clean"});
  const auto first = manager();
  EXPECT_EQ(executor(*first, "Clean"), "EchoExecutor");
  const auto second = manager();
  EXPECT_EQ(second->cachedExecutorForCommand("clean"), nullptr);
  EXPECT_EQ(executor(*second, "Clean"), "EchoExecutor");
}

}  // namespace
}  // namespace commandfilter
