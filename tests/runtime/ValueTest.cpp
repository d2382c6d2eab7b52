#include "runtime/Value.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Data.h"
#include "runtime/String.h"

namespace commandfilter {
namespace {

static_assert(sizeof(Value) == 16);
static_assert(std::is_nothrow_move_constructible_v<Value>);

TEST(Value, IsNilUnlessItIsGivenSomething) {
  EXPECT_TRUE(Value().isNil());
  EXPECT_TRUE(Value(nullptr).isNil());
  EXPECT_TRUE(Value(RefPtr<String>()).isNil());
  EXPECT_TRUE(Value::sharing(nullptr).isNil());
}

TEST(Value, TellsNilTheNullObjectAndNoApart) {
  const Value nil;
  const Value null = Value::null();
  const Value no = Value::boolean(false);
  EXPECT_TRUE(nil.isNil() && !nil.isNull() && !nil.isNumber() && !nil.isBoolean());
  EXPECT_TRUE(!null.isNil() && null.isNull() && !null.isNumber() && !null.isBoolean());
  EXPECT_TRUE(!no.isNil() && !no.isNull() && no.isNumber() && no.isBoolean());
  EXPECT_FALSE(nil.isObject() || null.isObject() || no.isObject());
  EXPECT_EQ(nil.object(), nullptr);
  EXPECT_EQ(null.object(), nullptr);
  EXPECT_EQ(no.object(), nullptr);
}

TEST(Value, KeepsANumberWithItsEncoding) {
  const auto roundTrip = [](const Number& number) { return Value(number).number(); };
  EXPECT_EQ(roundTrip(Number::integer(std::int16_t{-7})).encoding(), 's');
  EXPECT_EQ(roundTrip(Number::integer(std::int16_t{-7})).longValue(), -7);
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(roundTrip(Number::integer(kLargest)).unsignedLongValue(), kLargest);
  EXPECT_EQ(roundTrip(Number::integer(kLargest)).encoding(), 'Q');
  EXPECT_EQ(roundTrip(Number::real(0.1F)).encoding(), 'f');
  EXPECT_EQ(roundTrip(Number::real(0.1F)).floatValue(), 0.1F);
  EXPECT_EQ(roundTrip(Number::real(-2.5)).doubleValue(), -2.5);
}

TEST(Value, IsABooleanForEveryNumberOfThatEncoding) {
  EXPECT_TRUE(Value(Number::integer(std::int8_t{5})).isBoolean());
  EXPECT_FALSE(Value(Number::integer(1)).isBoolean());
}

TEST(Value, SharesItsObject) {
  const Ref<String> string = String::create("text");
  {
    const Value value = string;
    const Value copy = value;
    EXPECT_EQ(string->referenceCount(), 3U);
    EXPECT_EQ(copy.object(), string.get());
    EXPECT_TRUE(copy.isObject());
    EXPECT_TRUE(copy.isKind(ObjectKind::String));
    EXPECT_FALSE(copy.isKind(ObjectKind::Array));
  }
  EXPECT_EQ(string->referenceCount(), 1U);
  const Value shared = Value::sharing(string.get());
  EXPECT_EQ(string->referenceCount(), 2U);
}

TEST(Value, TakesOverAReferenceThatIsMoved) {
  Ref<String> string = String::create("text");
  const Value value = std::move(string);
  EXPECT_EQ(value.object()->referenceCount(), 1U);
  RefPtr<String> pointer = String::fromUTF8("text");
  const Value other = std::move(pointer);
  EXPECT_EQ(other.object()->referenceCount(), 1U);
  const RefPtr<String> kept = String::fromUTF8("text");
  const Value third = kept;
  EXPECT_EQ(third.object()->referenceCount(), 2U);
}

TEST(Value, GivesItsReferenceAway) {
  Value value = String::create("a");
  const Object* object = value.object();
  const Ref<String> string = value.take<String>();
  EXPECT_EQ(string.get(), object);
  EXPECT_EQ(string->referenceCount(), 1U);
  EXPECT_TRUE(value.isNil());
}

TEST(Value, LeavesNilBehindWhenItIsMoved) {
  Value first = String::create("text");
  const Object* object = first.object();
  Value second = std::move(first);
  EXPECT_TRUE(first.isNil());  // NOLINT(bugprone-use-after-move): that is the question
  EXPECT_EQ(second.object(), object);
  EXPECT_EQ(object->referenceCount(), 1U);
}

TEST(Value, IsAssigned) {
  Value value = String::create("one");
  const Value other = String::create("two");
  value = other;
  EXPECT_EQ(value.object(), other.object());
  EXPECT_EQ(other.object()->referenceCount(), 2U);
  value = Number::integer(5);
  EXPECT_EQ(other.object()->referenceCount(), 1U);
  EXPECT_EQ(value.number().longValue(), 5);
  value = Value();
  EXPECT_TRUE(value.isNil());
}

TEST(Value, SurvivesAssignmentToItself) {
  Value value = String::create("one");
  Value& same = value;
  value = same;
  EXPECT_EQ(value.object()->referenceCount(), 1U);
  value = std::move(same);
  ASSERT_TRUE(value.isObject());
  EXPECT_EQ(value.object()->referenceCount(), 1U);
}

TEST(Value, MayBeAssignedWhatOnlyItsOwnObjectHolds) {
  Value value = Array::create({Value(String::create("inside"))});
  value = (*static_cast<Array*>(value.object()))[0];
  EXPECT_TRUE(value.isKind(ObjectKind::String));
  EXPECT_EQ(value.object()->referenceCount(), 1U);
}

TEST(Value, Swaps) {
  Value left = Number::real(1.5);
  Value right = String::create("text");
  left.swap(right);
  EXPECT_TRUE(left.isKind(ObjectKind::String));
  EXPECT_EQ(right.number().encoding(), 'd');
  EXPECT_EQ(right.number().doubleValue(), 1.5);
}

TEST(Value, BecomesTheNullObjectInsideCollections) {
  EXPECT_TRUE(Value().orNull().isNull());
  EXPECT_TRUE(Value::null().orNull().isNull());
  EXPECT_TRUE(Value::boolean(false).orNull().isBoolean());
  EXPECT_TRUE(Value::null().nullAsNil().isNil());
  EXPECT_TRUE(Value().nullAsNil().isNil());
  EXPECT_TRUE(Value::boolean(false).nullAsNil().isBoolean());
}

TEST(Value, IsIdenticalToTheSameObjectOrNumber) {
  const Value string = String::create("text");
  EXPECT_TRUE(string.isIdenticalTo(string));
  EXPECT_FALSE(string.isIdenticalTo(String::create("text")));
  EXPECT_TRUE(Value().isIdenticalTo(Value()));
  EXPECT_TRUE(Value::null().isIdenticalTo(Value::null()));
  EXPECT_FALSE(Value().isIdenticalTo(Value::null()));
  EXPECT_FALSE(Value().isIdenticalTo(Value::boolean(false)));
  EXPECT_TRUE(Value(Number::integer(1)).isIdenticalTo(Number::integer(1)));
  EXPECT_FALSE(Value(Number::integer(1)).isIdenticalTo(Number::integer(2)));
  EXPECT_FALSE(Value(Number::integer(1)).isIdenticalTo(Value::boolean(true)));
  EXPECT_TRUE(Value(Number::real(0.5)).isIdenticalTo(Number::real(0.5)));
}

TEST(Value, KnowsTheKindOfItsObject) {
  EXPECT_TRUE(Value(Data::create("x")).isKind(ObjectKind::Data));
  EXPECT_FALSE(Value().isKind(ObjectKind::Other));
  EXPECT_FALSE(Value::null().isKind(ObjectKind::Other));
  EXPECT_FALSE(Value(Number::integer(0)).isKind(ObjectKind::Other));
}

}  // namespace
}  // namespace commandfilter
