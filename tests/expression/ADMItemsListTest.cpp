#include "expression/ADMItemsList.h"

#include <gtest/gtest.h>

#include "expression/Expressions.h"

namespace commandfilter::testing {
namespace {

std::string shownItems(const ADMItemsList& list) {
  const RefPtr<Array> items = list.items();
  return items ? shown(items) : "nil";
}

TEST(ItemsList, HasNoArrayBeforeTheFirstItem) {
  const Ref<ADMItemsList> list = ADMItemsList::create();
  EXPECT_FALSE(list->items());
  EXPECT_EQ(descriptionOf(list), "");
}

TEST(ItemsList, HasTheDescriptionOfItsArray) {
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(numberOf(1));
  list->appendItem(stringOf("a b"));
  EXPECT_EQ(descriptionOf(list), "(\n    1,\n    \"a b\"\n)");
}

TEST(ItemsList, HoldsTheNullObjectForNil) {
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(Value());
  ASSERT_TRUE(list->items());
  EXPECT_TRUE((*list->items())[0].isNull());
}

TEST(ItemsList, MergesLists) {
  const Ref<ADMItemsList> inner = ADMItemsList::listWithItem(numberOf(2));
  inner->appendItem(numberOf(3));
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(numberOf(1));
  list->appendItem(inner);
  list->appendItem(arrayOf({numberOf(4)}));
  EXPECT_EQ(shownItems(*list), "[1q, 2q, 3q, [4q]]");
  EXPECT_EQ(shownItems(*inner), "[2q, 3q]");
}

TEST(ItemsList, MergesAListThatHasNoArray) {
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(ADMItemsList::create());
  ASSERT_TRUE(list->items());
  EXPECT_TRUE(list->items()->isEmpty());
  EXPECT_EQ(descriptionOf(list), "(\n)");
}

TEST(ItemsList, CanBeAppendedToItself) {
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(numberOf(1));
  list->appendItem(numberOf(2));
  list->appendItem(list);
  EXPECT_EQ(shownItems(*list), "[1q, 2q, 1q, 2q]");
}

TEST(ItemsList, IsCopiedWithTheSameItems) {
  const Value item = stringOf("item");
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(item);
  const Ref<ADMItemsList> copy = list->copyWithZone();
  copy->appendItem(numberOf(1));
  EXPECT_EQ(shownItems(*list), R"(["item"])");
  EXPECT_EQ(shownItems(*copy), R"(["item", 1q])");
  EXPECT_TRUE((*copy->items())[0].isIdenticalTo(item));
}

TEST(ItemsList, IsCopiedAsAKey) {
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(numberOf(1));
  DictionaryBuilder builder;
  builder.set(Value(list), stringOf("value"));
  list->appendItem(numberOf(2));
  const Ref<Dictionary> dictionary = builder.build();
  EXPECT_TRUE(dictionary->objectForKey(Value(list)).isNil());
  const auto* key = castTo<ADMItemsList>(dictionary->begin()->key);
  ASSERT_NE(key, nullptr);
  EXPECT_EQ(shownItems(*key), "[1q]");
}

TEST(ItemsList, DoesNotChangeAnArrayThatWasGiven) {
  const Ref<ADMItemsList> list = ADMItemsList::listWithItem(numberOf(1));
  const RefPtr<Array> before = list->items();
  list->appendItem(numberOf(2));
  EXPECT_EQ(before->count(), 1U);
  EXPECT_EQ(list->items()->count(), 2U);
}

}  // namespace
}  // namespace commandfilter::testing
