#include "runtime/MutableDictionary.h"

#include <gtest/gtest.h>

#include "TestValues.h"
#include "runtime/Cast.h"

namespace commandfilter {
namespace {

using testing::stringOf;

TEST(MutableDictionary, IsFilledAndRead) {
  const Ref<MutableDictionary> store = MutableDictionary::create();
  EXPECT_EQ(store->count(), 0U);
  EXPECT_TRUE(store->objectForKey(stringOf("a")).isNil());
  for (int i = 0; i < 100; ++i) store->setObject_forKey(Number::integer(i), Number::integer(i));
  store->setObject_forKey(stringOf("other"), Number::real(7.0));
  EXPECT_EQ(store->count(), 100U);
  EXPECT_EQ(descriptionOf(store->objectForKey(Number::integer(7))), "other");
  EXPECT_EQ(store->objectForKey(Number::integer(99)).number().longValue(), 99);
  EXPECT_TRUE(store->objectForKey(Value()).isNil());
}

TEST(MutableDictionary, IsEmptied) {
  const Ref<MutableDictionary> store = MutableDictionary::create();
  const Ref<String> value = String::create("value");
  for (int i = 0; i < 20; ++i) store->setObject_forKey(value, Number::integer(i));
  store->removeAllObjects();
  EXPECT_EQ(store->count(), 0U);
  EXPECT_EQ(value->referenceCount(), 1U);
  EXPECT_TRUE(store->objectForKey(Number::integer(5)).isNil());
  store->setObject_forKey(value, Number::integer(5));
  EXPECT_EQ(store->count(), 1U);
  EXPECT_FALSE(store->objectForKey(Number::integer(5)).isNil());
}

TEST(MutableDictionary, CountsWhatItLoses) {
  const Ref<MutableDictionary> dictionary = MutableDictionary::create();
  dictionary->setObject_forKey(Number::integer(1), stringOf("a"));
  dictionary->setObject_forKey(Number::integer(2), stringOf("b"));
  EXPECT_EQ(dictionary->losses(), 0U);
  dictionary->setObject_forKey(Number::integer(3), stringOf("a"));
  EXPECT_EQ(dictionary->losses(), 1U);
  dictionary->removeAllObjects();
  EXPECT_EQ(dictionary->losses(), 2U);
}

TEST(MutableDictionary, IsNoDictionary) {
  const Value store = MutableDictionary::create();
  EXPECT_EQ(castTo<Dictionary>(store), nullptr);
  EXPECT_NE(castTo<MutableDictionary>(store), nullptr);
}

// Asks its dictionary for all keys when it goes, and puts one there.
class Last final : public Object {
 public:
  Last(MutableDictionary& dictionary, std::size_t& found)
      : dictionary_(&dictionary), found_(&found) {}
  ~Last() override {
    for (int i = 0; i < 100; ++i) {
      if (!dictionary_->objectForKey(Number::integer(i)).isNil()) ++*found_;
    }
    dictionary_->setObject_forKey(Value::boolean(true), stringOf("left"));
  }

 private:
  MutableDictionary* dictionary_;
  std::size_t* found_;
};

TEST(MutableDictionary, IsEmptyForWhatGoesWithItsEntries) {
  for (const int count : {1, 8, 9, 100}) {
    const Ref<MutableDictionary> dictionary = MutableDictionary::create();
    std::size_t found = 0;
    for (int i = 0; i < count; ++i) {
      dictionary->setObject_forKey(make<Last>(*dictionary, found), Number::integer(i));
    }
    dictionary->removeAllObjects();
    EXPECT_EQ(found, 0U);
    EXPECT_EQ(dictionary->count(), 1U);
    EXPECT_TRUE(dictionary->objectForKey(stringOf("left")).isBoolean());
    dictionary->removeAllObjects();
    EXPECT_EQ(dictionary->count(), 0U);
  }
}

}  // namespace
}  // namespace commandfilter
