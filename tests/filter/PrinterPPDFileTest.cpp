#include <cups/ppd.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "InChild.h"
#include "JobVariables.h"
#include "filter/environment/ACommandFilterEnvironment.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::JobVariables;
using testing::runInChild;
using testing::TemporaryFolder;
using testing::writeFile;

constexpr const char* kPPD = R"PPD(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "M1.PPD"
*Manufacturer: "Acme"
*Product: "(M1)"
*ModelName: "Acme M1"
*ShortNickName: "Acme M1"
*NickName: "Acme M1"
*PSVersion: "(3010.000) 0"
)PPD";

// A scheduler's files without the scheduler: libcups finds the PPD of a local queue by itself.
// Every test runs in a child, because libcups reads these variables once in a process.
class PrinterPPDFile : public ::testing::Test {
 protected:
  PrinterPPDFile() {
    fs::create_directories(root_.path() / "ppd");
    fs::create_directory(copies_);
    setenv("CUPS_SERVERROOT", root_.path().c_str(), 1);
    setenv("CUPS_SERVER", (root_.path() / "no-socket").c_str(), 1);
    setenv("TMPDIR", copies_.c_str(), 1);
  }
  ~PrinterPPDFile() override {
    for (const char* name : {"CUPS_SERVERROOT", "CUPS_SERVER", "TMPDIR"}) unsetenv(name);
  }

  void addPPD(const std::string& text) const { writeFile(ppd_, text); }
  [[nodiscard]] bool copiesAreLeft() const {
    return fs::directory_iterator(copies_) != fs::directory_iterator();
  }

  JobVariables variables_;
  TemporaryFolder root_;
  fs::path ppd_ = root_.path() / "ppd" / (std::string(testing::kQueueName) + ".ppd");
  fs::path copies_ = root_.path() / "copies";
};

TEST_F(PrinterPPDFile, IsOpenedForTheQueueAndItsCopyRemoved) {
  addPPD(kPPD);
  runInChild([this] {
    const auto environment = ACommandFilterEnvironment::init();
    ASSERT_TRUE(environment);
    const ppd_file_t* file = environment->printerPPDFile();
    ASSERT_NE(file, nullptr);
    EXPECT_STREQ(file->modelname, "Acme M1");
    EXPECT_FALSE(copiesAreLeft());
  });
}

TEST_F(PrinterPPDFile, IsOpenedOnce) {
  addPPD(kPPD);
  runInChild([this] {
    const auto environment = ACommandFilterEnvironment::init();
    ASSERT_TRUE(environment);
    const ppd_file_t* file = environment->printerPPDFile();
    ASSERT_NE(file, nullptr);
    fs::remove(ppd_);
    EXPECT_EQ(environment->printerPPDFile(), file);
    EXPECT_STREQ(file->modelname, "Acme M1");
  });
}

TEST_F(PrinterPPDFile, IsNullForAQueueWithoutOneAndAskedForAgain) {
  runInChild([this] {
    const auto environment = ACommandFilterEnvironment::init();
    ASSERT_TRUE(environment);
    EXPECT_EQ(environment->printerPPDFile(), nullptr);
    addPPD(kPPD);
    EXPECT_NE(environment->printerPPDFile(), nullptr);
  });
}

TEST_F(PrinterPPDFile, IsNullWhenItCannotBeReadAndItsCopyIsRemovedToo) {
  addPPD("no PPD\n");
  runInChild([this] {
    const auto environment = ACommandFilterEnvironment::init();
    ASSERT_TRUE(environment);
    EXPECT_EQ(environment->printerPPDFile(), nullptr);
    EXPECT_FALSE(copiesAreLeft());
    addPPD(kPPD);
    EXPECT_NE(environment->printerPPDFile(), nullptr);
  });
}

TEST_F(PrinterPPDFile, BelongsToOneEnvironment) {
  addPPD(kPPD);
  runInChild([] {
    const auto first = ACommandFilterEnvironment::init();
    const auto second = ACommandFilterEnvironment::init();
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    ASSERT_NE(first->printerPPDFile(), nullptr);
    EXPECT_NE(first->printerPPDFile(), second->printerPPDFile());
  });
}

}  // namespace
}  // namespace commandfilter
