#include "device_model/FeatureTable.h"

#include <gtest/gtest.h>

#include "Doubles.h"
#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::plist;
using testing::stringOf;

class Features : public ::testing::Test {
 protected:
  Value list_ = plist(
      "<dict><key>ink</key><dict><key>Value</key><string>some</string>"
      "<key>Identifiers</key><array><string>K</string><string>C</string></array>"
      "<key>Properties</key><dict>"
      "<key>level</key><dict><key>Value</key><integer>50</integer>"
      "<key>Identifiers</key><dict><key>K</key><integer>30</integer></dict></dict>"
      "<key>bare</key><dict/></dict></dict>"
      "<key>empty</key><dict/><key>odd</key><string>x</string></dict>");
  FeatureTable table_{Ref<Dictionary>(*castTo<Dictionary>(list_))};
  Value ink_ = stringOf("ink");
  Value level_ = stringOf("level");
};

TEST_F(Features, AreListedInTheirOrder) {
  EXPECT_TRUE(equal(table_.supportedFeatures(),
                    arrayOf({stringOf("ink"), stringOf("empty"), stringOf("odd")})));
}

TEST_F(Features, AreSupportedWhenTheyAreDescribed) {
  EXPECT_TRUE(table_.isSupportedFeature(ink_));
  EXPECT_TRUE(table_.isSupportedFeature(stringOf("empty")));
  EXPECT_FALSE(table_.isSupportedFeature(stringOf("Ink")));
  EXPECT_FALSE(table_.isSupportedFeature(stringOf("odd")));
  EXPECT_FALSE(table_.isSupportedFeature(Value()));
  EXPECT_FALSE(table_.isSupportedFeature(Number::integer(1)));
}

TEST_F(Features, HaveProperties) {
  EXPECT_TRUE(equal(table_.supportedPropertiesForFeature(ink_),
                    arrayOf({stringOf("level"), stringOf("bare")})));
  EXPECT_TRUE(equal(table_.supportedPropertiesForFeature(stringOf("empty")), arrayOf({})));
  EXPECT_TRUE(table_.supportedPropertiesForFeature(stringOf("none")).isNil());
  EXPECT_TRUE(table_.isSupportedProperty_forFeature(level_, ink_));
  EXPECT_FALSE(table_.isSupportedProperty_forFeature(ink_, level_));
  EXPECT_FALSE(table_.isSupportedProperty_forFeature(level_, stringOf("empty")));
}

TEST_F(Features, HaveIdentifiersAndValues) {
  EXPECT_TRUE(equal(table_.identifiersForFeature(ink_), arrayOf({stringOf("K"), stringOf("C")})));
  EXPECT_TRUE(table_.identifiersForFeature(stringOf("empty")).isNil());
  EXPECT_TRUE(equal(table_.valueForFeature(ink_), stringOf("some")));
  EXPECT_TRUE(table_.valueForFeature(stringOf("empty")).isNil());
  EXPECT_TRUE(equal(table_.valueForFeature_property(ink_, level_), Number::integer(50)));
  EXPECT_TRUE(table_.valueForFeature_property(ink_, stringOf("bare")).isNil());
  EXPECT_TRUE(equal(table_.valueForFeature_property_identifier(ink_, level_, stringOf("K")),
                    Number::integer(30)));
  EXPECT_TRUE(table_.valueForFeature_property_identifier(ink_, level_, stringOf("C")).isNil());
  EXPECT_TRUE(table_.valueForFeature_property_identifier(ink_, level_, Value()).isNil());
  EXPECT_TRUE(
      table_.valueForFeature_property_identifier(ink_, stringOf("bare"), stringOf("K")).isNil());
}

TEST(FeatureTable, FindsByEqualityAndNotByText) {
  const Value list = plist(
      "<dict><key>1</key><dict><key>Value</key><string>feature</string><key>Properties</key><dict>"
      "<key>2</key><dict><key>Value</key><string>property</string><key>Identifiers</key><dict>"
      "<key>3</key><string>identifier</string></dict></dict></dict></dict></dict>");
  const FeatureTable table(Ref<Dictionary>(*castTo<Dictionary>(list)));
  const Value texts[] = {stringOf("1"), stringOf("2"), stringOf("3")};
  const Value numbers[] = {Number::integer(1), Number::integer(2), Number::integer(3)};
  EXPECT_TRUE(equal(table.valueForFeature_property_identifier(texts[0], texts[1], texts[2]),
                    stringOf("identifier")));
  EXPECT_FALSE(table.isSupportedFeature(numbers[0]));
  EXPECT_TRUE(table.valueForFeature(numbers[0]).isNil());
  EXPECT_FALSE(table.isSupportedProperty_forFeature(numbers[1], texts[0]));
  EXPECT_TRUE(table.valueForFeature_property(texts[0], numbers[1]).isNil());
  EXPECT_TRUE(table.valueForFeature_property_identifier(texts[0], texts[1], numbers[2]).isNil());
}

}  // namespace
}  // namespace commandfilter
