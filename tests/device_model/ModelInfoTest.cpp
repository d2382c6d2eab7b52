#include "device_model/ModelInfo.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "Doubles.h"
#include "TestValues.h"
#include "device_model/ModelInfoManager.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

using testing::plist;
using testing::stringOf;

class ModelTables : public ::testing::Test {
 protected:
  bool add(const std::string& table) {
    return ModelInfoManager::sharedManager()->registerTable_location(
        String::create(table).get(), String::create(folder_.path().string()).get());
  }
  void write(const std::string& table, const std::string& entries) {
    testing::writeFile(folder_.path() / (table + ".plist"), "<plist>" + entries + "</plist>");
  }
  static Value lookUp(std::string_view model, const std::string& path, const std::string& table,
                      const Dictionary* described = nullptr) {
    const std::array names{model};
    return ModelInfo::create(names, described)
        ->valueForInfoPath_inTable(String::create(path).get(), String::create(table).get());
  }

  testing::TemporaryFolder folder_;
};

const std::string kEntries =
    "<dict><key>M1</key><dict><key>own</key><string>of M1</string></dict>"
    "<key>Default</key><dict><key>own</key><string>default</string><key>common</key>"
    "<string>shared</string></dict></dict>";

TEST_F(ModelTables, AreRegisteredWhenTheyAreThere) {
  write("T", kEntries);
  EXPECT_TRUE(add("T"));
  EXPECT_FALSE(add("Missing"));
  EXPECT_FALSE(add(""));
  EXPECT_FALSE(add("../T"));
  EXPECT_FALSE(add(std::string("T\0", 2)));
  const Ref<ModelInfoManager> manager = ModelInfoManager::sharedManager();
  const Ref<String> name = String::create("T");
  EXPECT_FALSE(manager->registerTable_location(name.get(), nullptr));
  EXPECT_FALSE(manager->registerTable_location(nullptr, name.get()));
  EXPECT_FALSE(manager->registerTable_location(name.get(), String::create("").get()));
  const std::string cut = folder_.path().string() + std::string("\0x", 2);
  EXPECT_FALSE(manager->registerTable_location(name.get(), String::create(cut).get()));
  EXPECT_EQ(manager.get(), ModelInfoManager::sharedManager().get());
}

TEST_F(ModelTables, GiveTheModelsEntryThenTheDefault) {
  write("T", kEntries);
  ASSERT_TRUE(add("T"));
  EXPECT_TRUE(equal(lookUp("M1", "own", "T"), stringOf("of M1")));
  EXPECT_TRUE(equal(lookUp("M1", "common", "T"), stringOf("shared")));
  EXPECT_TRUE(equal(lookUp("M2", "own", "T"), stringOf("default")));
  EXPECT_TRUE(equal(lookUp("", "own", "T"), stringOf("default")));
  EXPECT_TRUE(lookUp("M1", "other", "T").isNil());
  EXPECT_TRUE(lookUp("M1", "own", "NotRegistered").isNil());
}

TEST_F(ModelTables, MoveWhenTheyAreRegisteredAgain) {
  write("T", kEntries);
  ASSERT_TRUE(add("T"));
  const testing::TemporaryFolder other;
  testing::writeFile(other.path() / "T.plist",
                     "<plist><dict><key>M1</key><dict><key>own</key><true/></dict></dict></plist>");
  ASSERT_TRUE(ModelInfoManager::sharedManager()->registerTable_location(
      String::create("T").get(), String::create(other.path().string()).get()));
  EXPECT_TRUE(equal(lookUp("M1", "own", "T"), Value::boolean(true)));
}

TEST_F(ModelTables, AreEmptyWhenTheyCannotBeRead) {
  for (const char* entries : {"", "<array/>", "<dict><key>M1</key><string/></dict>", "<dict"}) {
    write("T", entries);
    ASSERT_TRUE(add("T"));
    EXPECT_TRUE(lookUp("M1", "own", "T").isNil()) << entries;
  }
}

TEST_F(ModelTables, GiveWayToADescription) {
  write("T", kEntries);
  ASSERT_TRUE(add("T"));
  const Value described =
      plist("<dict><key>T</key><dict><key>own</key><string>described</string></dict></dict>");
  const auto* tables = castTo<Dictionary>(described);
  EXPECT_TRUE(equal(lookUp("M1", "own", "T", tables), stringOf("described")));
  EXPECT_TRUE(equal(lookUp("M1", "common", "T", tables), stringOf("shared")));
}

TEST_F(ModelTables, KnowNothingUnderNil) {
  const std::array<std::string_view, 1> names{"M1"};
  const Ref<ModelInfo> info = ModelInfo::create(names);
  const Ref<String> text = String::create("T");
  EXPECT_TRUE(info->valueForInfoPath_inTable(nullptr, text.get()).isNil());
  EXPECT_TRUE(info->valueForInfoPath_inTable(text.get(), nullptr).isNil());
}

}  // namespace
}  // namespace commandfilter
