#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "check/NearestName.h"

namespace commandfilter::testing {
namespace {

using tools::editDistance;
using tools::NearestName;

TEST(EditDistance, CountsLettersThatDiffer) {
  EXPECT_EQ(editDistance("GetItem", "GetItem", 9), 0U);
  EXPECT_EQ(editDistance("GetItem", "getitem", 9), 0U);
  EXPECT_EQ(editDistance("GetItm", "GetItem", 9), 1U);
  EXPECT_EQ(editDistance("GteItem", "GetItem", 9), 1U);
  EXPECT_EQ(editDistance("GetItemm", "GetItem", 9), 1U);
  EXPECT_EQ(editDistance("", "abc", 9), 3U);
  EXPECT_EQ(editDistance("kitten", "sitting", 9), 3U);
}

TEST(EditDistance, StopsAtTheLimit) {
  EXPECT_EQ(editDistance("kitten", "sitting", 2), 3U);
  EXPECT_EQ(editDistance("a", std::string(1000, 'b'), 3), 4U);
}

TEST(NearestName, GivesTheMostSimilarOne) {
  NearestName names({"GetKey", "GetItem", "GetSize"});
  EXPECT_EQ(names.of("GetItm"), "GetItem");
  EXPECT_EQ(names.of("getsize"), "GetSize");
  EXPECT_EQ(names.of("Getkez"), "GetKey");
  EXPECT_EQ(names.of("Frobnicate"), "");
  EXPECT_EQ(names.of(""), "");
}

TEST(NearestName, FindsNothingLikeNamesThatShareNoLetter) {
  NearestName names({"A", "In"});
  EXPECT_EQ(names.of("B"), "");
  EXPECT_EQ(names.of("If"), "In");
}

TEST(NearestName, GivesUpAfterMuchLooking) {
  const std::vector<std::string> many(100'000, "abcdefgh");
  NearestName names({many.begin(), many.end()});
  std::string last = "?";
  for (int i = 0; i < 100; ++i) last = names.of("abcdefg" + std::to_string(i));
  EXPECT_EQ(last, "");
  EXPECT_EQ(names.of("abcdefg0"), "");
}

}  // namespace
}  // namespace commandfilter::testing
