// Plug-ins that others than root and the filter's user could have changed.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "InChild.h"
#include "TestBundles.h"
#include "filter/ACommandFilterPlugInManager.h"
#include "filter/DeviceModelModule.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::addApplication;
using testing::addBundle;
using testing::codeOf;
using testing::isLoaded;
using testing::runInChild;
using testing::TemporaryFolder;
using testing::writeFile;

class DistrustedPlugIns : public ::testing::Test {
 protected:
  DistrustedPlugIns() {
    fs::create_directories(bundle_ / "Contents" / "Resources" / "Tables");
    writeFile(bundle_ / "Contents" / "Resources" / "Tables" / "model.plist", "");
  }

  // Another manager finds the same plug-in as long as nobody spoils it.
  [[nodiscard]] bool isFound() const {
    const auto application = Bundle::bundleWithPath(application_.string());
    const auto manager =
        ACommandFilterPlugInManager::plugInManagerForBundle(Ref<Bundle>(*application));
    return manager->executorClassForCommand(*String::create("Clean")) != nullptr;
  }
  void expectRefusalWith(const fs::path& path, mode_t mode) const {
    const fs::perms before = fs::status(path).permissions();
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    EXPECT_FALSE(isFound()) << path;
    EXPECT_FALSE(isLoaded(bundle_)) << path;
    fs::permissions(path, before);
  }

  TemporaryFolder root_;
  fs::path plugIns_ = root_.path() / "plugins";
  fs::path bundle_ = addBundle(plugIns_, "Echo.bundle", "Echo", {"Clean"});
  fs::path application_ = addApplication(root_.path(), {plugIns_.string()});
};

TEST_F(DistrustedPlugIns, AreNotLoaded) {
  for (const char* part :
       {"", "Contents", "Contents/Linux", "Contents/Resources", "Contents/Resources/Tables"}) {
    expectRefusalWith(bundle_ / part, 0775);
    expectRefusalWith(bundle_ / part, 0757);
  }
  for (const char* part :
       {"Contents/Info.plist", "Contents/Linux/Code", "Contents/Resources/Tables/model.plist"}) {
    expectRefusalWith(bundle_ / part, 0664);
    expectRefusalWith(bundle_ / part, 0646);
  }
  runInChild([this] { EXPECT_TRUE(isFound()); });
}

TEST_F(DistrustedPlugIns, AreThoseInAFolderThatOthersWriteTo) {
  expectRefusalWith(plugIns_, 0775);
  expectRefusalWith(plugIns_, 01777);
}

TEST_F(DistrustedPlugIns, AreThoseThatAListNamesWhichOthersWriteTo) {
  expectRefusalWith(application_ / "Contents" / "Info.plist", 0664);
  expectRefusalWith(application_ / "Contents", 0775);
  expectRefusalWith(application_, 0777);
}

TEST_F(DistrustedPlugIns, AreThoseInABuiltInFolderThatOthersWriteTo) {
  const fs::path builtIn = application_ / "Contents" / "PlugIns";
  fs::create_directories(builtIn);
  fs::rename(bundle_, builtIn / "Echo.bundle");
  ASSERT_EQ(chmod(builtIn.c_str(), 0775), 0);
  EXPECT_FALSE(isFound());
  ASSERT_EQ(chmod(builtIn.c_str(), 0755), 0);
  runInChild([this] { EXPECT_TRUE(isFound()); });
}

TEST_F(DistrustedPlugIns, AreThoseBehindALinkIntoAFolderThatOthersWriteTo) {
  const fs::path elsewhere = root_.path() / "elsewhere";
  fs::create_directory(elsewhere);
  fs::rename(bundle_, elsewhere / "Echo.bundle");
  fs::create_directory_symlink(elsewhere / "Echo.bundle", bundle_);
  expectRefusalWith(elsewhere, 0777);
  runInChild([this] { EXPECT_TRUE(isFound()); });
}

TEST_F(DistrustedPlugIns, AreThoseOfAnotherUser) {
  if (geteuid() != 0) GTEST_SKIP() << "only root gives files away";
  constexpr uid_t kNobody = 65534;
  for (const fs::path& path : {plugIns_, bundle_, codeOf(bundle_)}) {
    ASSERT_EQ(chown(path.c_str(), kNobody, static_cast<gid_t>(-1)), 0);
    EXPECT_FALSE(isFound()) << path;
    ASSERT_EQ(chown(path.c_str(), 0, static_cast<gid_t>(-1)), 0);
  }
  runInChild([this] { EXPECT_TRUE(isFound()); });
}

TEST_F(DistrustedPlugIns, SayWhyTheyAreNotLoaded) {
  ASSERT_EQ(chmod(codeOf(bundle_).c_str(), 0777), 0);
  const auto bundle = Bundle::bundleWithPath(bundle_.string());
  EXPECT_FALSE(bundle->load());
  EXPECT_EQ(bundle->loadFailure(), codeOf(bundle_).string() +
                                       " can be written by others than its owner (mode 0777); "
                                       "use: chmod go-w '" +
                                       codeOf(bundle_).string() + "'");
}

TEST(DistrustedDeviceModel, IsNotLoaded) {
  const TemporaryFolder root;
  const fs::path application = addApplication(root.path(), {});
  const fs::path frameworks = application / "Contents" / "Frameworks";
  const fs::path bundle = addBundle(frameworks, "VemoDeviceModel.bundle", "Echo", {});
  const auto program = Bundle::bundleWithPath(application.string());
  ASSERT_EQ(chmod(frameworks.c_str(), 0775), 0);
  EXPECT_NE(loadDeviceModel(*program).find("chmod go-w"), std::string::npos);
  ASSERT_EQ(chmod(frameworks.c_str(), 0755), 0);
  ASSERT_EQ(chmod((bundle / "Contents").c_str(), 0775), 0);
  EXPECT_NE(loadDeviceModel(*program).find("chmod go-w"), std::string::npos);
  ASSERT_EQ(chmod((bundle / "Contents").c_str(), 0755), 0);
  runInChild([&program] { EXPECT_EQ(loadDeviceModel(*program), ""); });
}

}  // namespace
}  // namespace commandfilter
