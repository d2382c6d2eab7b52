#include "device_model/SNMPAnswer.h"

#include <gtest/gtest.h>

#include <string>

namespace commandfilter {
namespace {

using namespace std::string_view_literals;

TEST(ObjectIDText, IsReadWithAndWithoutTheFirstFullStop) {
  EXPECT_EQ(parseObjectID(".1.3.6"), (ObjectID{1, 3, 6}));
  EXPECT_EQ(parseObjectID("1.3.6"), (ObjectID{1, 3, 6}));
  EXPECT_EQ(parseObjectID("4294967295"), (ObjectID{4294967295}));
}

TEST(ObjectIDText, IsNothingElse) {
  for (const char* text : {"", ".", "1.", "1..2", "1.a", "a", "-1", "1.-2", "4294967296", " 1"}) {
    EXPECT_EQ(parseObjectID(text), std::nullopt) << text;
  }
  std::string longest = "1";
  for (int i = 1; i < 128; ++i) longest += ".1";
  EXPECT_TRUE(parseObjectID(longest));
  EXPECT_FALSE(parseObjectID(longest + ".1"));
}

TEST(ObjectIDText, IsWrittenAsItIsRead) {
  EXPECT_EQ(textOfObjectID({1, 3, 6}), ".1.3.6");
  EXPECT_EQ(textOfObjectID({}), "");
}

TEST(ObjectIDs, LieBelowTheirRoot) {
  EXPECT_TRUE(isBelow({1, 3, 6}, {1, 3}));
  EXPECT_TRUE(isBelow({1, 3}, {1, 3}));
  EXPECT_FALSE(isBelow({1}, {1, 3}));
  EXPECT_FALSE(isBelow({1, 33}, {1, 3}));
}

TEST(SNMPAnswer, IsAnIdentifierAndAValue) {
  const auto entry = parseSNMPAnswer(".1.3\0va\0lue"sv);
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->identifier, (ObjectID{1, 3}));
  EXPECT_EQ(entry->value, "va\0lue"sv);
}

TEST(SNMPAnswer, MayHaveNoValue) {
  EXPECT_EQ(parseSNMPAnswer(".1.3\0"sv)->value, "");
  EXPECT_EQ(parseSNMPAnswer(".1.3"sv)->value, "");
}

TEST(SNMPAnswer, HasAnIdentifier) {
  for (const std::string_view bytes : {""sv, "\0value"sv, "MFG:Acme;"sv, "\xFF\xFF"sv}) {
    EXPECT_FALSE(parseSNMPAnswer(bytes));
  }
}

TEST(SNMPValue, IsReadAsAnInteger) {
  EXPECT_EQ(integerOfSNMPValue("42"), 42);
  EXPECT_EQ(integerOfSNMPValue("-3"), -3);
  EXPECT_EQ(integerOfSNMPValue("7\0rest"sv), 7);
  EXPECT_EQ(integerOfSNMPValue("4294967295"), 4294967295);
  for (const char* text : {"", "a", "1a", " 1", "1 ", "99999999999999999999"}) {
    EXPECT_EQ(integerOfSNMPValue(text), std::nullopt) << text;
  }
}

TEST(SNMPValue, IsReadAsText) {
  EXPECT_EQ(textOfSNMPValue(" Black \0\0"sv), "Black");
  EXPECT_EQ(textOfSNMPValue("Gr\xFCn"), "Gr\xC3\xBCn");
  EXPECT_EQ(textOfSNMPValue(""), "");
}

}  // namespace
}  // namespace commandfilter
