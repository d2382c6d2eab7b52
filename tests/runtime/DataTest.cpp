#include "runtime/Data.h"

#include <gtest/gtest.h>

#include <string>

#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"

namespace commandfilter {
namespace {

TEST(Data, KeepsItsBytes) {
  EXPECT_EQ(Data::create(std::string("\0\xFF"
                                     "a",
                                     3))
                ->bytes(),
            std::string("\0\xFF"
                        "a",
                        3));
  EXPECT_EQ(Data::create("")->bytes(), "");
}

TEST(Data, EqualsTheSameBytes) {
  const Value data = Data::create("ab");
  EXPECT_TRUE(equal(data, Data::create("ab")));
  EXPECT_FALSE(equal(data, Data::create("ac")));
  EXPECT_FALSE(equal(data, Data::create(std::string("ab\0", 3))));
  EXPECT_FALSE(equal(data, testing::stringOf("ab")));
  EXPECT_FALSE(equal(testing::stringOf("ab"), data));
  EXPECT_FALSE(equal(data, Value()));
  EXPECT_EQ(hashOf(data), hashOf(Data::create("ab")));
  EXPECT_NE(hashOf(data), hashOf(Data::create("ac")));
}

TEST(Data, DescribesItselfInGroupsOfFourBytes) {
  EXPECT_EQ(descriptionOf(Data::create("")), "<>");
  EXPECT_EQ(descriptionOf(Data::create(std::string("\0", 1))), "<00>");
  EXPECT_EQ(descriptionOf(Data::create("\x01\x23\x45\x67")), "<01234567>");
  EXPECT_EQ(descriptionOf(Data::create("\x89\xAB\xCD\xEF\x7F")), "<89abcdef 7f>");
}

TEST(Data, AnswersItsLength) {
  EXPECT_EQ(send(Data::create("abc"), Selector("length")).number().longValue(), 3);
}

}  // namespace
}  // namespace commandfilter
