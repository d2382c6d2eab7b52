#include "runtime/Trust.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "TestFiles.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::makeFile;
using testing::TemporaryFolder;

constexpr uid_t kNobody = 65534;

class Trust : public ::testing::Test {
 protected:
  [[nodiscard]] std::string path(const std::string& name) const {
    return (folder_.path() / name).string();
  }
  // The path that is at fault, relative to the test's folder; empty when all is well.
  [[nodiscard]] std::string faultOf(const std::optional<Distrust>& found) const {
    return found ? fs::path(found->path).lexically_relative(fs::canonical(folder_.path())).string()
                 : std::string();
  }
  [[nodiscard]] std::string fault(const std::string& name) const {
    return faultOf(distrustOf(path(name)));
  }
  [[nodiscard]] std::string treeFault(const std::string& name) const {
    return faultOf(distrustOfTree(path(name)));
  }
  void setMode(const std::string& name, mode_t mode) const {
    ASSERT_EQ(chmod(path(name).c_str(), mode), 0);
  }

  TemporaryFolder folder_;
};

TEST_F(Trust, IsGivenToWhatOnlyItsOwnerWrites) {
  makeFile(folder_, "a/file", "");
  for (const mode_t mode : {0644U, 0600U, 0755U, 0444U, 04755U, 02755U}) {
    setMode("a/file", mode);
    EXPECT_EQ(fault("a/file"), "") << mode;
  }
  EXPECT_EQ(fault("a"), "");
  EXPECT_EQ(treeFault("a"), "");
}

TEST_F(Trust, IsNotGivenToWhatGroupOrOthersWrite) {
  makeFile(folder_, "a/file", "");
  for (const mode_t mode : {0664U, 0646U, 0666U, 0620U, 0602U, 01777U}) {
    setMode("a/file", mode);
    const std::optional<Distrust> found = distrustOf(path("a/file"));
    ASSERT_TRUE(found) << mode;
    EXPECT_EQ(found->reason, Distrust::Reason::Writable);
    EXPECT_EQ(found->mode, mode);
    EXPECT_EQ(found->owner, geteuid());
    EXPECT_EQ(treeFault("a"), "a/file");
  }
}

TEST_F(Trust, IsNotGivenToWhatAnotherUserOwns) {
  if (geteuid() != 0) GTEST_SKIP() << "only root gives files away";
  makeFile(folder_, "a/file", "");
  ASSERT_EQ(chown(path("a/file").c_str(), kNobody, static_cast<gid_t>(-1)), 0);
  const std::optional<Distrust> found = distrustOf(path("a/file"));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->reason, Distrust::Reason::Owner);
  EXPECT_EQ(found->owner, kNobody);
  // It is that user's own.
  ASSERT_EQ(seteuid(kNobody), 0);
  EXPECT_EQ(fault("a/file"), "");
  EXPECT_EQ(fault("a"), "") << "root's";
  ASSERT_EQ(seteuid(0), 0);
}

TEST_F(Trust, OfATreeEndsAtTheFirstFault) {
  makeFile(folder_, "a/b/c/file", "");
  setMode("a/b/c/file", 0666);
  EXPECT_EQ(treeFault("a"), "a/b/c/file");
  setMode("a/b/c", 0775);
  EXPECT_EQ(treeFault("a"), "a/b/c");
  setMode("a", 0757);
  EXPECT_EQ(treeFault("a"), "a");
  EXPECT_EQ(treeFault("a/b"), "a/b/c");
}

TEST_F(Trust, FollowsLinks) {
  makeFile(folder_, "real/file", "");
  makeFile(folder_, "a/other", "");
  fs::create_symlink("../real/file", path("a/link"));
  EXPECT_EQ(fault("a/link"), "");
  EXPECT_EQ(treeFault("a"), "");
  setMode("real/file", 0666);
  EXPECT_EQ(fault("a/link"), "real/file");
  EXPECT_EQ(treeFault("a"), "real/file");
  setMode("real/file", 0644);
  // Whoever writes there puts another file in its place.
  setMode("real", 0777);
  EXPECT_EQ(fault("a/link"), "real");
  EXPECT_EQ(treeFault("a"), "real");
}

TEST_F(Trust, FollowsLinksToFolders) {
  makeFile(folder_, "real/folder/file", "");
  fs::create_directory_symlink("real/folder", path("link"));
  EXPECT_EQ(treeFault("link"), "");
  setMode("real/folder/file", 0664);
  EXPECT_EQ(treeFault("link"), "real/folder/file");
  setMode("real/folder/file", 0644);
  setMode("real", 0775);
  EXPECT_EQ(treeFault("link"), "real");
  EXPECT_EQ(treeFault("real/folder"), "") << "the folder around it is the caller's";
}

TEST_F(Trust, FollowsLinksRoundOnce) {
  makeFile(folder_, "a/b/file", "");
  fs::create_directory_symlink("..", path("a/b/up"));
  fs::create_directory_symlink(".", path("a/b/here"));
  fs::create_symlink("nowhere", path("a/b/broken"));
  EXPECT_EQ(treeFault("a"), "");
  setMode("a/b/file", 0666);
  EXPECT_EQ(treeFault("a"), "a/b/file");
}

TEST_F(Trust, IsNotGivenToWhatIsNotThere) {
  const std::optional<Distrust> found = distrustOf(path("missing"));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->reason, Distrust::Reason::Unknown);
  EXPECT_TRUE(distrustOfTree(path("missing")));
  fs::create_symlink("loop", path("loop"));
  EXPECT_TRUE(distrustOf(path("loop")));
  EXPECT_TRUE(distrustOfTree(path("loop")));
}

TEST_F(Trust, DescribesAFaultWithItsRemedy) {
  EXPECT_EQ((Distrust{"/p/x", Distrust::Reason::Writable, 0, 0775}.description()),
            "/p/x can be written by others than its owner (mode 0775); use: chmod go-w '/p/x'");
  EXPECT_EQ((Distrust{"/p/x", Distrust::Reason::Owner, 1000, 0755}.description()),
            "/p/x belongs to user 1000, who is neither root nor the filter's user; use: "
            "chown root '/p/x'");
  EXPECT_EQ((Distrust{"/p/x", Distrust::Reason::Unknown, 0, 0}.description()),
            "/p/x cannot be examined; use: chmod a+rX '/p/x'");
}

}  // namespace
}  // namespace commandfilter
