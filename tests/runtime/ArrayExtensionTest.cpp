#include "runtime/ArrayExtension.h"

#include <gtest/gtest.h>

#include <utility>

#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/SizeLimits.h"
#include "runtime/ValueVector.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::reasonOf;
using testing::stringOf;

TEST(ArrayExtension, AppendsTheElementsOfAnArray) {
  const Ref<Array> array =
      arrayExtendedBy(arrayOf({Number::integer(1)}), arrayOf({stringOf("a"), arrayOf({})}));
  EXPECT_TRUE(equal(array, arrayOf({Number::integer(1), stringOf("a"), arrayOf({})})));
  EXPECT_TRUE(arrayExtendedBy(arrayOf({}), arrayOf({}))->isEmpty());
}

TEST(ArrayExtension, AppendsAnyOtherValueAsOneElement) {
  const Value dictionary = testing::dictionaryOf({});
  EXPECT_TRUE(equal(arrayExtendedBy(arrayOf({}), dictionary), arrayOf({dictionary})));
  EXPECT_TRUE((*arrayExtendedBy(arrayOf({}), Value()))[0].isNull());
  EXPECT_TRUE((*arrayExtendedBy(arrayOf({}), Value::null()))[0].isNull());
}

TEST(ArrayExtension, ExtendsAnArrayThatNobodyElseHolds) {
  Value left = arrayOf({Number::integer(1)});
  const Object* object = left.object();
  const Ref<Array> extended = arrayExtendedBy(std::move(left), stringOf("a"));
  EXPECT_EQ(extended.get(), object);
  EXPECT_EQ(extended->referenceCount(), 1U);
  EXPECT_EQ(extended->count(), 2U);
}

TEST(ArrayExtension, LeavesAnArrayAloneThatSomebodyHolds) {
  const Value left = arrayOf({Number::integer(1)});
  const Value right = arrayOf({Number::integer(2)});
  EXPECT_EQ(arrayExtendedBy(left, right)->count(), 2U);
  EXPECT_EQ(arrayExtendedBy(left, left)->count(), 2U);
  EXPECT_TRUE(equal(left, arrayOf({Number::integer(1)})));
  EXPECT_TRUE(equal(right, arrayOf({Number::integer(2)})));
}

TEST(ArrayExtension, AppendsAnElementOfTheArrayItself) {
  Value left = arrayOf({arrayOf({stringOf("a"), stringOf("b")})});
  const Value& inside = (*static_cast<Array*>(left.object()))[0];
  const Ref<Array> extended = arrayExtendedBy(std::move(left), inside);
  EXPECT_EQ(descriptionOf(extended), "(\n    (\n        a,\n        b\n    ),\n    a,\n    b\n)");
}

TEST(ArrayExtension, BuildsALongArrayPieceByPiece) {
  Value array = arrayOf({});
  for (int i = 0; i < 100'000; ++i) array = arrayExtendedBy(std::move(array), Number::integer(i));
  EXPECT_EQ(static_cast<Array*>(array.object())->count(), 100'000U);
}

TEST(ArrayExtension, StopsAtTheLargestArray) {
  Value left = Array::create(ValueVector(kLargestArray - 1, Number::integer(0)));
  Ref<Array> largest = arrayExtendedBy(std::move(left), stringOf("a"));
  EXPECT_EQ(largest->count(), kLargestArray);
  // Held by somebody else, and by nobody.
  EXPECT_EQ(reasonOf([&] { static_cast<void>(arrayExtendedBy(largest, stringOf("a"))); }),
            "a value is too large");
  EXPECT_EQ(
      reasonOf([&] { static_cast<void>(arrayExtendedBy(std::move(largest), stringOf("a"))); }),
      "a value is too large");
}

}  // namespace
}  // namespace commandfilter
