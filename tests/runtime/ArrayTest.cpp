#include "runtime/Array.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::reasonOf;
using testing::stringOf;

TEST(Array, IsEmptyUnlessItIsGivenElements) {
  const Ref<Array> array = Array::create();
  EXPECT_TRUE(array->isEmpty());
  EXPECT_EQ(array->count(), 0U);
  EXPECT_EQ(array->begin(), array->end());
}

TEST(Array, KeepsItsElementsInOrder) {
  const Ref<Array> array = Array::create({Number::integer(3), stringOf("x"), Number::integer(3)});
  EXPECT_FALSE(array->isEmpty());
  ASSERT_EQ(array->count(), 3U);
  EXPECT_EQ((*array)[0].number().longValue(), 3);
  EXPECT_EQ(descriptionOf(array->objectAtIndex(1)), "x");
  ValueVector seen(array->begin(), array->end());
  EXPECT_TRUE(equal(seen[2], Number::integer(3)));
}

TEST(Array, HoldsTheNullObjectInPlaceOfNil) {
  const Ref<Array> array = Array::create({Value(), Value::null(), Value::boolean(false)});
  EXPECT_TRUE((*array)[0].isNull());
  EXPECT_TRUE((*array)[1].isNull());
  EXPECT_TRUE((*array)[2].isBoolean());
}

TEST(Array, RaisesForAnIndexOutOfRange) {
  const Ref<Array> array = Array::create({Number::integer(1), Number::integer(2)});
  EXPECT_EQ(reasonOf([&] { static_cast<void>(array->objectAtIndex(2)); }),
            "index 2 beyond the array's 2 elements");
  EXPECT_EQ(reasonOf([&] { static_cast<void>(Array::create()->objectAtIndex(0)); }),
            "index 0 beyond the array's 0 elements");
  EXPECT_FALSE(reasonOf([&] { static_cast<void>(array->objectAtIndex(SIZE_MAX)); }).empty());
}

TEST(Array, EqualsAnArrayOfEqualElementsInTheSameOrder) {
  const Value array = arrayOf({Number::integer(1), stringOf("x")});
  EXPECT_TRUE(equal(array, array));
  EXPECT_TRUE(equal(array, arrayOf({Number::real(1.0), stringOf("x")})));
  EXPECT_FALSE(equal(array, arrayOf({stringOf("x"), Number::integer(1)})));
  EXPECT_FALSE(equal(array, arrayOf({Number::integer(1)})));
  EXPECT_FALSE(equal(arrayOf({Number::integer(1)}), array));
  EXPECT_TRUE(equal(arrayOf({}), arrayOf({})));
  EXPECT_FALSE(equal(arrayOf({}), Value()));
  EXPECT_FALSE(equal(arrayOf({}), testing::dictionaryOf({})));
  EXPECT_EQ(hashOf(array), hashOf(arrayOf({Number::real(1.0), stringOf("x")})));
}

TEST(Array, FindsAnElementByItsValue) {
  const Ref<Array> array = Array::create({Number::integer(1), arrayOf({stringOf("x")})});
  EXPECT_TRUE(array->containsObject(Number::real(1.0)));
  EXPECT_TRUE(array->containsObject(arrayOf({stringOf("x")})));
  EXPECT_FALSE(array->containsObject(stringOf("x")));
  EXPECT_FALSE(array->containsObject(Value()));
  EXPECT_FALSE(Array::create()->containsObject(Value::null()));
  EXPECT_TRUE(Array::create({Value()})->containsObject(Value::null()));
}

TEST(Array, AnswersItsCountAndElements) {
  const Value array = arrayOf({stringOf("a"), stringOf("b")});
  const Value count = send(array, Selector("count"));
  EXPECT_EQ(count.number().encoding(), 'Q');
  EXPECT_EQ(count.number().longValue(), 2);
  const Selector objectAtIndex("objectAtIndex:");
  EXPECT_EQ(descriptionOf(send(array, objectAtIndex, {Number::integer(1)})), "b");
  EXPECT_FALSE(reasonOf([&] { send(array, objectAtIndex, {Number::integer(2)}); }).empty());
  EXPECT_FALSE(reasonOf([&] { send(array, objectAtIndex, {Number::integer(-1)}); }).empty());
}

TEST(Array, ReleasesItsElements) {
  const Ref<String> string = String::create("text");
  {
    const Ref<Array> array = Array::create({Value(string), Value(string)});
    EXPECT_EQ(string->referenceCount(), 3U);
  }
  EXPECT_EQ(string->referenceCount(), 1U);
}

}  // namespace
}  // namespace commandfilter
