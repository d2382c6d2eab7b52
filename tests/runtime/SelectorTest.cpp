#include "runtime/Selector.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace commandfilter {
namespace {

using namespace std::string_view_literals;

TEST(Selector, IsTheSameForTheSameName) {
  const Selector first("valueForFeature:property:");
  const Selector second(std::string("valueForFeature:") + "property:");
  EXPECT_EQ(first, second);
  EXPECT_EQ(first.hash(), second.hash());
  EXPECT_EQ(&first.name(), &second.name());
  EXPECT_EQ(first.name(), "valueForFeature:property:");
}

TEST(Selector, DiffersForAnotherName) {
  EXPECT_FALSE(Selector("count") == Selector("count:"));
  EXPECT_FALSE(Selector("count") == Selector("Count"));
  EXPECT_NE(Selector("count").hash(), Selector("count:").hash());
}

TEST(Selector, TakesOneArgumentForEachColon) {
  EXPECT_EQ(Selector("count").argumentCount(), 0U);
  EXPECT_EQ(Selector("objectAtIndex:").argumentCount(), 1U);
  EXPECT_EQ(Selector("valueForFeature:property:identifier:").argumentCount(), 3U);
  EXPECT_EQ(Selector("::").argumentCount(), 2U);
  EXPECT_EQ(Selector("").argumentCount(), 0U);
}

TEST(Selector, ComesFromAnyTextWithoutNUL) {
  const auto selector = Selector::fromString("\u00E4 b");
  ASSERT_TRUE(selector);
  EXPECT_EQ(selector->name(), "\u00E4 b");
  EXPECT_EQ(*selector, Selector("\u00E4 b"));
  EXPECT_FALSE(Selector::fromString("a\0b"sv));
  EXPECT_TRUE(Selector::fromString(""));
}

TEST(Selector, KeepsItsNameWhenOthersAreAdded) {
  const Selector first("kept");
  const std::string* name = &first.name();
  for (int i = 0; i < 10000; ++i) static_cast<void>(Selector("name" + std::to_string(i)));
  EXPECT_EQ(&Selector("kept").name(), name);
  EXPECT_EQ(*name, "kept");
}

}  // namespace
}  // namespace commandfilter
