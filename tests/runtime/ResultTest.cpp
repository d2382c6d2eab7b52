#include "runtime/Result.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace commandfilter {
namespace {

Result<std::string> answer(bool succeeds) {
  if (!succeeds) return Failure{"no answer"};
  return std::string("answer");
}

TEST(Result, HoldsAValue) {
  Result<std::string> result = answer(true);
  ASSERT_TRUE(result);
  EXPECT_EQ(*result, "answer");
  EXPECT_EQ(result->size(), 6U);
  EXPECT_EQ(result.reason(), "");
}

TEST(Result, HoldsTheReasonOfAFailure) {
  const Result<std::string> result = answer(false);
  EXPECT_FALSE(result);
  EXPECT_EQ(result.reason(), "no answer");
}

TEST(Result, HoldsWhatCanOnlyBeMoved) {
  Result<std::unique_ptr<int>> result = std::make_unique<int>(5);
  const std::unique_ptr<int> taken = std::move(*result);
  EXPECT_EQ(*taken, 5);
}

}  // namespace
}  // namespace commandfilter
