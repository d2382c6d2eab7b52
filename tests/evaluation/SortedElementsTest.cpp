#include "evaluation/SortedElements.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "expression/Expressions.h"
#include "runtime/Comparison.h"
#include "runtime/Date.h"
#include "runtime/ValueVector.h"

namespace commandfilter::testing {
namespace {

// The search as it is written down: where a key belongs among the keys so far.
std::size_t placeOf(const Value& key, const ValueVector& keys) {
  if (keys.empty()) return 0;
  std::ptrdiff_t low = 0;
  std::ptrdiff_t high = static_cast<std::ptrdiff_t>(keys.size()) - 1;
  const auto keyAt = [&keys](std::ptrdiff_t index) {
    return keys[static_cast<std::size_t>(index)];
  };
  if (high > 0) {
    while (true) {
      const std::ptrdiff_t middle = (low + high) / 2;
      if (compare(key, keyAt(middle)) < 0) {
        high = middle;
        if (middle <= low) break;
      } else {
        low = middle + 1;
        if (high <= low) break;
      }
    }
  }
  return static_cast<std::size_t>(high) + (compare(key, keyAt(high)) > 0 ? 1 : 0);
}

// A sort that inserts every element where the search says.
class SearchedElements {
 public:
  void insert(const Value& key, const Value& element) {
    if (key.isNil()) {
      elements_.push_back(element);
      return;
    }
    const auto place = static_cast<std::ptrdiff_t>(placeOf(key, keys_));
    keys_.insert(keys_.begin() + place, key);
    elements_.insert(elements_.begin() + place, element);
  }
  [[nodiscard]] Value elements() const { return Array::create(elements_); }

 private:
  ValueVector keys_;
  ValueVector elements_;
};

using Keys = ValueVector;

// What is sorted are numbers from 0 up.
Ref<SortedElements> sortedNumbers() {
  const Value list = rangeOf(300);
  return SortedElements::create(Ref<Array>(*castTo<Array>(list)));
}

// Every element is the index of its key.
void expectTheSearchedOrder(const Keys& keys) {
  const Ref<SortedElements> sorted = sortedNumbers();
  SearchedElements searched;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    sorted->insertNext(keys[i]);
    searched.insert(keys[i], numberOf(static_cast<std::int64_t>(i)));
  }
  EXPECT_EQ(shown(sorted->elementsSoFar()), shown(searched.elements()))
      << shown(Array::create(keys));
}

// Keys drawn from the values, so that many are equal.
void expectTheSearchedOrderOfKeysFrom(const Keys& values) {
  std::mt19937 random(20);  // NOLINT: the same numbers at every run
  for (std::size_t count = 0; count < 300; count += count < 40 ? 1 : 43) {
    for (int round = 0; round < 20; ++round) {
      Keys keys;
      const std::size_t variety = 1 + random() % values.size();
      for (std::size_t i = 0; i < count; ++i) keys.push_back(values[random() % variety]);
      expectTheSearchedOrder(keys);
      if (::testing::Test::HasFailure()) return;
    }
  }
}

TEST(SortedElements, StandWhereTheSearchPutsNumbers) {
  Keys values;
  for (std::int64_t i = 0; i < 12; ++i) values.push_back(numberOf((i * 7) % 12 - 5));
  expectTheSearchedOrderOfKeysFrom(values);
}

TEST(SortedElements, StandWhereTheSearchPutsManyDifferentNumbers) {
  Keys values;
  for (std::int64_t i = 0; i < 250; ++i) values.push_back(numberOf(i * i * i - 1'000'000));
  expectTheSearchedOrderOfKeysFrom(values);
}

TEST(SortedElements, StandWhereTheSearchPutsNumbersOfAllEncodings) {
  constexpr std::int64_t kWhole = std::int64_t{1} << 53U;
  expectTheSearchedOrderOfKeysFrom({numberOf(1),
                                    Value::boolean(true),
                                    Number::real(1.0),
                                    Number::real(1.5F),
                                    Number::real(-0.0),
                                    numberOf(0),
                                    Value::boolean(false),
                                    numberOf(kWhole),
                                    numberOf(kWhole + 1),
                                    Number::real(static_cast<double>(kWhole)),
                                    numberOf(-kWhole),
                                    numberOf(-kWhole - 1),
                                    Number::integer(std::numeric_limits<std::uint64_t>::max()),
                                    Number::integer(std::numeric_limits<std::uint64_t>::max() - 1),
                                    numberOf(-1),
                                    numberOf(-2),
                                    Number::real(18446744073709551616.0),
                                    numberOf(std::numeric_limits<std::int64_t>::min()),
                                    numberOf(std::numeric_limits<std::int64_t>::max()),
                                    Number::real(std::numeric_limits<double>::infinity()),
                                    Number::real(-std::numeric_limits<double>::infinity()),
                                    Number::real(std::numeric_limits<double>::quiet_NaN()),
                                    Number::real(std::numeric_limits<double>::denorm_min())});
}

TEST(SortedElements, StandWhereTheSearchPutsTexts) {
  expectTheSearchedOrderOfKeysFrom(
      {stringOf(""), stringOf("a"), stringOf(std::string("a\0", 2)), stringOf("b"),
       stringOf("Black"), stringOf("12345678"), stringOf("123456789"), stringOf("12345678a"),
       stringOf(std::string("12345678\0", 9)), stringOf("1234567"),
       stringOf(std::string("1234567\0", 8)), stringOf("\xF0\x9F\x96\xA8"),
       stringOf("\xEE\x80\x80"), stringOf("\xEF\xBF\xBD"), stringOf("\xED\x9F\xBF"),
       stringOf("12345678\xF0\x9F\x96\xA8"), stringOf("12345678\xEF\xBF\xBD"),
       stringOf("1234567\xF0\x9F\x96\xA8"), stringOf("1234567\xEF\xBF\xBD")});
}

TEST(SortedElements, StandWhereTheSearchPutsLongTexts) {
  Keys values;
  for (const std::string_view end : {"", "a", "b", "\xEF\xBF\xBD", "\xF0\x9F\x96\xA8"}) {
    for (const std::size_t length : {6U, 7U, 8U, 13U, 14U, 15U, 40U}) {
      values.push_back(stringOf(std::string(length, 'x') + std::string(end)));
      values.push_back(stringOf(std::string(length, 'x') + std::string(end) + "y"));
    }
  }
  expectTheSearchedOrderOfKeysFrom(values);
}

TEST(SortedElements, StandWhereTheSearchPutsDates) {
  expectTheSearchedOrderOfKeysFrom(
      {Date::create(0), Date::create(-1), Date::create(0.5), Date::create(1e12), Date::create(0)});
}

TEST(SortedElements, WithoutAKeyStandBehindTheOthersAsTheyCame) {
  expectTheSearchedOrderOfKeysFrom(
      {numberOf(1), Value(), numberOf(2), numberOf(1), Value(), numberOf(0)});
}

TEST(SortedElements, OfEqualKeysKeepTheFirstBehindThoseThatCameWhileItWasTheGreatest) {
  const Ref<SortedElements> sorted = sortedNumbers();
  for (const std::int64_t key : {1, 1, 1, 2, 1}) sorted->insertNext(numberOf(key));
  EXPECT_EQ(shown(sorted->elementsSoFar()), "[1q, 2q, 0q, 4q, 3q]");
}

TEST(SortedElements, ShowTheElementsSoFar) {
  const Ref<SortedElements> sorted = sortedNumbers();
  SearchedElements searched;
  std::mt19937 random(7);  // NOLINT: the same numbers at every run
  std::vector<std::pair<Ref<Array>, std::string>> seen;
  for (std::int64_t i = 0; i < 200; ++i) {
    const Value key = i % 11 == 0 ? Value() : numberOf(static_cast<std::int64_t>(random() % 20));
    sorted->insertNext(key);
    searched.insert(key, numberOf(i));
    if (random() % 3 == 0) seen.emplace_back(sorted->elementsSoFar(), shown(searched.elements()));
  }
  for (const auto& [array, expected] : seen) EXPECT_EQ(shown(array), expected);
  EXPECT_EQ(sorted->elementsSoFar().get(), sorted->elementsSoFar().get());
  EXPECT_EQ(shown(sorted->elementsSoFar()), shown(searched.elements()));
}

TEST(SortedElements, AcceptOneKeyOfAnyKind) {
  for (const Value& key : {Value::null(), arrayOf({}), dictionaryOf({})}) {
    const Ref<SortedElements> sorted = sortedNumbers();
    sorted->insertNext(Value());
    sorted->insertNext(key);
    EXPECT_EQ(shown(sorted->elementsSoFar()), "[1q, 0q]");
    const std::string name(classOf(key)->name);
    EXPECT_EQ(reasonOf([&] { sorted->insertNext(key); }),
              "cannot order " + name + " against " + name);
  }
}

TEST(SortedElements, RefuseKeysOfDifferentKinds) {
  const Ref<SortedElements> sorted = sortedNumbers();
  sorted->insertNext(numberOf(1));
  sorted->insertNext(numberOf(2));
  EXPECT_EQ(reasonOf([&] { sorted->insertNext(stringOf("1")); }),
            "cannot order String against Number");
  EXPECT_EQ(reasonOf([&] { sorted->insertNext(Value::null()); }),
            "cannot order Null against Number");
  EXPECT_EQ(shown(sorted->elementsSoFar()), "[0q, 1q]");
}

}  // namespace
}  // namespace commandfilter::testing
