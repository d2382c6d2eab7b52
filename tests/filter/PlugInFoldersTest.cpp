#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "InChild.h"
#include "TestBundles.h"
#include "filter/ACommandFilterPlugInManager.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::arrayEntry;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::propertyList;
using testing::runInChild;
using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;
using testing::writeFile;
using Paths = std::vector<std::string>;

std::optional<Paths> pluginsInFolder(const fs::path& folder) {
  return ACommandFilterPlugInManager::pluginsInFolder(folder.string());
}

class PlugInFolders : public ::testing::Test {
 protected:
  [[nodiscard]] fs::path path(const std::string& name) const { return root_.path() / name; }
  [[nodiscard]] std::string text(const std::string& name) const { return path(name).string(); }
  void addFile(const std::string& name) const {
    fs::create_directories(path(name).parent_path());
    writeFile(path(name), "");
  }
  // A manager of a bundle with this information property list.
  [[nodiscard]] Ref<ACommandFilterPlugInManager> managerWithInfo(std::string_view info) const {
    fs::create_directories(path("Test.app/Contents"));
    writeFile(path("Test.app/Contents/Info.plist"), info);
    const auto bundle = Bundle::bundleWithPath(text("Test.app"));
    return ACommandFilterPlugInManager::plugInManagerForBundle(Ref<Bundle>(*bundle));
  }
  [[nodiscard]] Ref<ACommandFilterPlugInManager> managerWithLocations(const Paths& paths) const {
    return managerWithInfo(
        propertyList("<dict>" + arrayEntry("PlugInLocations", paths) + "</dict>"));
  }

  TemporaryFolder root_;
};

TEST_F(PlugInFolders, AreNilWhenThereIsNoFolder) {
  addFile("file");
  fs::create_symlink("nowhere", path("broken"));
  fs::create_symlink("cycle", path("cycle"));
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  for (const char* name : {"missing", "file", "file/below", "broken", "cycle", "fifo"}) {
    EXPECT_EQ(pluginsInFolder(path(name)), std::nullopt) << name;
  }
  EXPECT_EQ(pluginsInFolder(""), std::nullopt);
}

TEST_F(PlugInFolders, AreEmptyForAnEmptyFolder) {
  fs::create_directory(path("A"));
  const auto plugins = pluginsInFolder(path("A"));
  ASSERT_TRUE(plugins.has_value());
  EXPECT_THAT(*plugins, IsEmpty());
}

TEST_F(PlugInFolders, ListEveryEntryWhateverItIs) {
  addFile("A/plain file");
  addFile("A/.hidden");
  addFile("A/Good.bundle/Contents/Info.plist");
  addFile("A/.hidden.bundle/Contents/Info.plist");
  fs::create_symlink("nowhere", path("A/broken"));
  ASSERT_EQ(mkfifo(path("A/fifo").c_str(), 0600), 0);
  const auto plugins = pluginsInFolder(path("A"));
  ASSERT_TRUE(plugins.has_value());
  EXPECT_THAT(*plugins,
              UnorderedElementsAre(text("A/plain file"), text("A/.hidden"), text("A/Good.bundle"),
                                   text("A/.hidden.bundle"), text("A/broken"), text("A/fifo")));
}

TEST_F(PlugInFolders, KeepTheOrderOfTheFileSystem) {
  for (const char* name : {"m", "b", "z", "a", "y", "c", "x", "d", "w", "e", "v", "f", "u", "g"}) {
    addFile(std::string("A/") + name);
  }
  Paths expected;
  for (const fs::directory_entry& entry : fs::directory_iterator(path("A"))) {
    expected.push_back(entry.path().string());
  }
  EXPECT_EQ(pluginsInFolder(path("A")), expected);
}

TEST_F(PlugInFolders, FollowALinkToAFolder) {
  addFile("A/file");
  fs::create_directory_symlink(path("A"), path("link"));
  EXPECT_EQ(pluginsInFolder(path("link")), Paths{text("link/file")});
}

TEST_F(PlugInFolders, HaveNoEntriesWhenTheFolderCannotBeListed) {
  addFile("A/file");
  runInChild([this] {
    // No further descriptor can be opened, so the folder is there but cannot be read.
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{.rlim_cur = 0, .rlim_max = before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const auto plugins = pluginsInFolder(path("A"));
    // Sanitizers open files of their own.
    setrlimit(RLIMIT_NOFILE, &before);
    ASSERT_TRUE(plugins.has_value());
    EXPECT_THAT(*plugins, IsEmpty());
  });
}

TEST_F(PlugInFolders, ThatAreExternalComeInTheOrderOfThePropertyList) {
  addFile("B/second");
  addFile("A/first");
  addFile("C/third");
  EXPECT_THAT(managerWithLocations({text("A"), text("B"), text("C")})->externalPlugins(),
              ElementsAre(text("A/first"), text("B/second"), text("C/third")));
  EXPECT_THAT(managerWithLocations({text("C"), text("A"), text("B")})->externalPlugins(),
              ElementsAre(text("C/third"), text("A/first"), text("B/second")));
}

TEST_F(PlugInFolders, ThatAreMissingContributeNothing) {
  addFile("A/first");
  addFile("B/second");
  addFile("file");
  EXPECT_THAT(managerWithLocations({text("A"), text("missing"), text("file"), "", text("B")})
                  ->externalPlugins(),
              ElementsAre(text("A/first"), text("B/second")));
}

TEST_F(PlugInFolders, MayBeNamedTwice) {
  addFile("A/first");
  EXPECT_THAT(managerWithLocations({text("A"), text("A")})->externalPlugins(),
              ElementsAre(text("A/first"), text("A/first")));
}

TEST_F(PlugInFolders, ThatAreExternalAreNoneWithoutTheKey) {
  EXPECT_THAT(managerWithInfo(propertyList("<dict/>"))->externalPlugins(), IsEmpty());
  EXPECT_THAT(managerWithLocations({})->externalPlugins(), IsEmpty());
}

TEST_F(PlugInFolders, OverlookValuesOfAnotherKind) {
  addFile("A/first");
  EXPECT_THAT(managerWithInfo(propertyList("<dict><key>PlugInLocations</key><string>" + text("A") +
                                           "</string></dict>"))
                  ->externalPlugins(),
              IsEmpty());
  EXPECT_THAT(managerWithInfo(propertyList("<dict><key>PlugInLocations</key><array><integer>1"
                                           "</integer><dict/><string>" +
                                           text("A") + "</string></array></dict>"))
                  ->externalPlugins(),
              ElementsAre(text("A/first")));
}

TEST_F(PlugInFolders, AreTakenAsTheyAreWritten) {
  addFile("home/plugins/at home");
  addFile("~/plugins/as written");
  const auto manager =
      managerWithLocations({"~/plugins", "$HOME/plugins", "./~/plugins/../plugins"});
  runInChild([&] {
    fs::current_path(root_.path());
    setenv("HOME", path("home").c_str(), 1);
    EXPECT_THAT(manager->externalPlugins(),
                ElementsAre("~/plugins/as written", "./~/plugins/../plugins/as written"));
  });
}

TEST_F(PlugInFolders, ThatAreBuiltInLieInTheBundle) {
  addFile("Test.app/Contents/PlugIns/built in");
  addFile("Test.app/PlugIns/elsewhere");
  EXPECT_THAT(managerWithLocations({})->internalPlugins(),
              ElementsAre(text("Test.app/Contents/PlugIns/built in")));
}

TEST_F(PlugInFolders, ThatAreBuiltInMayBeMissing) {
  EXPECT_THAT(managerWithLocations({})->internalPlugins(), IsEmpty());
}

TEST_F(PlugInFolders, SurviveABrokenPropertyListOfTheApplication) {
  addFile("Test.app/Contents/PlugIns/built in");
  for (const std::string& info : {std::string(), std::string("<plist><dict><key>PlugInLoc"),
                                  propertyList("<array/>"), std::string("\xFF\x00", 2)}) {
    const auto manager = managerWithInfo(info);
    EXPECT_THAT(manager->externalPlugins(), IsEmpty()) << info;
    EXPECT_EQ(manager->internalPlugins().size(), 1U) << info;
  }
}

}  // namespace
}  // namespace commandfilter
