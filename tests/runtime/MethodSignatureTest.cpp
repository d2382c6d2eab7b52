#include "runtime/MethodSignature.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace commandfilter {
namespace {

TEST(MethodSignature, IsFalseWhenItIsEmpty) {
  EXPECT_FALSE(MethodSignature());
  EXPECT_TRUE(MethodSignature("v"));
  EXPECT_EQ(MethodSignature().methodReturnLength(), 0U);
}

TEST(MethodSignature, CountsReceiverAndSelector) {
  EXPECT_EQ(MethodSignature("v").numberOfArguments(), 2U);
  EXPECT_EQ(MethodSignature("@@i").numberOfArguments(), 4U);
}

TEST(MethodSignature, SpellsTheTypes) {
  const MethodSignature signature("*@*c");
  EXPECT_EQ(signature.methodReturnType(), "r*");
  EXPECT_EQ(signature.argumentTypeAtIndex(0), "@");
  EXPECT_EQ(signature.argumentTypeAtIndex(1), ":");
  EXPECT_EQ(signature.argumentTypeAtIndex(2), "@");
  EXPECT_EQ(signature.argumentTypeAtIndex(3), "r*");
  EXPECT_EQ(signature.argumentTypeAtIndex(4), "c");
}

TEST(MethodSignature, KnowsTheBytesOfTheResult) {
  const std::vector<std::pair<std::string_view, std::size_t>> lengths{
      {"v", 0}, {"c", 1}, {"C", 1}, {"s", 2}, {"S", 2}, {"i", 4}, {"I", 4},
      {"f", 4}, {"q", 8}, {"Q", 8}, {"d", 8}, {"*", 8}, {"@", 8}, {"@c", 8}};
  for (const auto& [types, length] : lengths) {
    EXPECT_EQ(MethodSignature(types).methodReturnLength(), length) << types;
  }
}

}  // namespace
}  // namespace commandfilter
