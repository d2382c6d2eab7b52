#include "runtime/LiveObjects.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "TestObjects.h"
#include "TestValues.h"

namespace commandfilter {
namespace {

using testing::Greeter;
using testing::LoudGreeter;

// Zero also for a class that is not listed.
std::size_t livingOf(const std::string& name) {
  const auto living = LiveObjects::byClass();
  const auto found = living.find(name);
  return found != living.end() ? found->second : 0;
}

TEST(LiveObjects, CountsEachClass) {
  if (!LiveObjects::kCounting) GTEST_SKIP() << "nothing is counted in this build";
  {
    const Value first = make<Greeter>("Anna");
    const Value second = first;
    const Value third = make<Greeter>("Berta");
    const Value loud = make<LoudGreeter>("Clara");
    EXPECT_EQ(livingOf("Greeter"), 2U);
    EXPECT_EQ(livingOf("LoudGreeter"), 1U);
  }
  EXPECT_EQ(livingOf("Greeter"), 0U);
  EXPECT_EQ(LiveObjects::byClass().count("Greeter"), 0U);
}

TEST(LiveObjects, CountsWhatCollectionsHold) {
  if (!LiveObjects::kCounting) GTEST_SKIP() << "nothing is counted in this build";
  const std::size_t before = livingOf("Array");
  {
    const Value nested = testing::nestedArrays(1000, Value::null());
    EXPECT_EQ(livingOf("Array"), before + 1000);
  }
  EXPECT_EQ(livingOf("Array"), before);
}

TEST(LiveObjects, DoesNotCountNumbersAndTheNullObject) {
  const auto before = LiveObjects::byClass();
  const Value number = Number::integer(1);
  const Value null = Value::null();
  EXPECT_EQ(LiveObjects::byClass(), before);
}

TEST(LiveObjects, IsEmptyWhenNothingIsCounted) {
  if (LiveObjects::kCounting) GTEST_SKIP() << "this build counts";
  const Value string = testing::stringOf("text");
  EXPECT_TRUE(LiveObjects::byClass().empty());
}

}  // namespace
}  // namespace commandfilter
