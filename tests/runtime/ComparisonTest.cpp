#include "runtime/Comparison.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "Counts.h"
#include "TestValues.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/ValueVector.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::dictionaryOf;
using testing::kHundredThousand;
using testing::kMillion;
using testing::nestedArrays;
using testing::nestedDictionaries;
using testing::reasonOf;
using testing::runOnStackOf;
using testing::stringOf;

// One value of every kind, no two equal.
ValueVector oneOfEachKind() {
  return {Value(),
          Value::null(),
          Value::boolean(false),
          Number::integer(7),
          Number::real(0.5),
          stringOf("7"),
          arrayOf({Number::integer(7)}),
          dictionaryOf({{stringOf("7"), Number::integer(7)}}),
          Data::create("7"),
          Date::create(7)};
}

TEST(Comparison, TellsEveryKindFromEveryOther) {
  const ValueVector values = oneOfEachKind();
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (std::size_t j = 0; j < values.size(); ++j) {
      EXPECT_EQ(equal(values[i], values[j]), i == j) << i << " and " << j;
    }
  }
}

TEST(Comparison, EqualsNumbersByMathematicalValue) {
  EXPECT_TRUE(equal(Value::boolean(true), Number::integer(1)));
  EXPECT_TRUE(equal(Number::integer(2), Number::real(2.0)));
  EXPECT_FALSE(
      equal(Number::integer(std::numeric_limits<std::uint64_t>::max()), Number::integer(-1)));
  EXPECT_FALSE(equal(Number::integer(0), Value::null()));
  EXPECT_FALSE(equal(Number::integer(0), Value()));
}

TEST(Comparison, EqualsCollectionsElementByElement) {
  const auto make = [](const Number& number) {
    return arrayOf({dictionaryOf({{stringOf("a"), number}, {Value::boolean(true), stringOf("x")}}),
                    Value::null()});
  };
  EXPECT_TRUE(equal(make(Number::integer(2)), make(Number::real(2.0))));
  EXPECT_FALSE(equal(make(Number::integer(2)), make(Number::integer(3))));
}

TEST(Comparison, TellsCollectionsOfTheSameSizeApartByTheirHashes) {
  // Otherwise a dictionary whose keys are collections is walked at every look-up.
  EXPECT_NE(hashOf(arrayOf({Number::integer(1)})), hashOf(arrayOf({Number::integer(2)})));
  EXPECT_NE(hashOf(arrayOf({stringOf("a")})), hashOf(arrayOf({stringOf("b")})));
}

TEST(Comparison, GivesEqualValuesEqualHashes) {
  EXPECT_EQ(hashOf(Value()), hashOf(Value()));
  EXPECT_EQ(hashOf(Value::null()), hashOf(Value::null()));
  EXPECT_NE(hashOf(Value()), hashOf(Value::null()));
  EXPECT_EQ(hashOf(Number::integer(3)), hashOf(Number::real(3.0)));
  EXPECT_EQ(hashOf(stringOf("x")), hashOf(stringOf("x")));
  EXPECT_EQ(hashOf(arrayOf({Number::integer(1)})), hashOf(arrayOf({Value::boolean(true)})));
  EXPECT_EQ(hashOf(Data::create("x")), hashOf(Data::create("x")));
  EXPECT_EQ(hashOf(Date::create(5)), hashOf(Date::create(5)));
}

TEST(Comparison, OrdersNumbersStringsAndDates) {
  EXPECT_TRUE(compare(Value::boolean(true), Number::real(1.5)) < 0);
  EXPECT_TRUE(compare(Number::integer(2), Number::real(2.0)) == 0);
  EXPECT_TRUE(compare(stringOf("b"), stringOf("a")) > 0);
  EXPECT_TRUE(compare(stringOf("a"), stringOf("a")) == 0);
  EXPECT_TRUE(compare(stringOf("\uFFFD"), stringOf("\U0001F600")) > 0);
  EXPECT_TRUE(compare(Date::create(1), Date::create(1.5)) < 0);
  EXPECT_TRUE(compare(Date::create(1), Date::create(1)) == 0);
}

TEST(Comparison, RaisesForEveryOtherPair) {
  const ValueVector values = oneOfEachKind();
  for (const Value& left : values) {
    for (const Value& right : values) {
      const bool ordered = (left.isNumber() && right.isNumber()) ||
                           (left.isKind(ObjectKind::String) && right.isKind(ObjectKind::String)) ||
                           (left.isKind(ObjectKind::Date) && right.isKind(ObjectKind::Date));
      const std::string reason = reasonOf([&] { static_cast<void>(compare(left, right)); });
      EXPECT_EQ(reason.empty(), ordered) << descriptionOf(left) << " " << descriptionOf(right);
    }
  }
}

TEST(Comparison, NamesTheKindsThatCannotBeOrdered) {
  EXPECT_EQ(reasonOf([] { static_cast<void>(compare(stringOf("1"), Number::integer(1))); }),
            "cannot order String against Number");
  EXPECT_EQ(reasonOf([] { static_cast<void>(compare(Value(), Value::null())); }),
            "cannot order nil against Null");
}

TEST(Comparison, ComparesWhatIsNestedAsDeepAsAPropertyList) {
  EXPECT_TRUE(equal(nestedArrays(512, Number::integer(1)), nestedArrays(512, Number::real(1.0))));
  EXPECT_FALSE(equal(nestedArrays(512, Number::integer(1)), nestedArrays(512, Number::real(2.0))));
  EXPECT_TRUE(
      equal(nestedDictionaries(512, Value::null()), nestedDictionaries(512, Value::null())));
}

// Written out, these have more elements than could ever be visited.
template <typename MakePair>
Value doubled(Value inmost, MakePair&& makePair) {
  constexpr int kTimes = 100;
  Value value = std::move(inmost);
  for (int i = 0; i < kTimes; ++i) value = makePair(value);
  return value;
}

TEST(Comparison, ComparesArraysThatHoldTheSamePartAgainAndAgain) {
  const auto twice = [](const Value& part) { return Value(arrayOf({part, Value(), part})); };
  const Value array = doubled(stringOf("x"), twice);
  EXPECT_TRUE(equal(array, doubled(stringOf("x"), twice)));
  EXPECT_FALSE(equal(array, doubled(stringOf("y"), twice)));
}

TEST(Comparison, ComparesDictionariesThatHoldTheSamePartAgainAndAgain) {
  const auto twice = [](const Value& part) {
    return Value(dictionaryOf({{stringOf("a"), part}, {stringOf("b"), part}}));
  };
  const Value dictionary = doubled(stringOf("x"), twice);
  EXPECT_TRUE(equal(dictionary, doubled(stringOf("x"), twice)));
  EXPECT_FALSE(equal(dictionary, doubled(stringOf("y"), twice)));
}

TEST(Comparison, ForgetsPairsBetweenComparisons) {
  const auto pairs = [](const char* text) {
    ValueVector elements;
    for (std::size_t i = 0; i < kHundredThousand / 10; ++i) {
      elements.emplace_back(arrayOf({stringOf(text)}));
    }
    return Value(Array::create(std::move(elements)));
  };
  // The freed elements of one round are likely the memory of the next.
  for (const char* text : {"a", "b", "c"}) {
    EXPECT_TRUE(equal(pairs("a"), pairs(text)) == (std::string_view(text) == "a"));
  }
}

TEST(Comparison, RaisesForValuesNestedAMillionDeep) {
  for (const auto nested : {&nestedArrays, &nestedDictionaries}) {
    const Value left = nested(kMillion, Number::integer(1));
    const Value right = nested(kMillion, Number::integer(1));
    EXPECT_EQ(reasonOf([&] { static_cast<void>(equal(left, right)); }), "nested too deeply");
    EXPECT_TRUE(equal(left, left));
    EXPECT_EQ(hashOf(left), hashOf(right));
  }
}

TEST(Comparison, RaisesForDeepValuesOnASmallStack) {
  for (const auto nested : {&nestedArrays, &nestedDictionaries}) {
    const Value left = nested(kHundredThousand, Number::integer(1));
    const Value right = nested(kHundredThousand, Number::integer(1));
    std::string reason;
    runOnStackOf(std::size_t{256} * 1024,
                 [&] { reason = reasonOf([&] { static_cast<void>(equal(left, right)); }); });
    EXPECT_EQ(reason, "nested too deeply");
  }
}

}  // namespace
}  // namespace commandfilter
