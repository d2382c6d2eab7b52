#include "evaluation/ElementSet.h"

#include <gtest/gtest.h>

#include <limits>

#include "expression/Expressions.h"
#include "runtime/Comparison.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Object.h"
#include "runtime/ValueVector.h"

namespace commandfilter::testing {
namespace {

// An object that equals every object of its class with the same remainder, and the string "any",
// and whose hash says nothing.
class OtherObject final : public Object {
 public:
  static const Class kClass;

  explicit OtherObject(int number) : number_(number) {}
  ~OtherObject() override = default;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool isEqual(const Value& other) const override {
    if (const auto* string = castTo<String>(other)) return string->view() == "any";
    const auto* object = castTo<OtherObject>(other);
    return object != nullptr && object->number_ % 2 == number_ % 2;
  }

 private:
  int number_;
};
constinit const Class OtherObject::kClass{.name = "OtherObject", .base = &Object::kClass};

ValueVector valuesOfAllKinds() {
  return {Value::null(),
          numberOf(0),
          Value::boolean(false),
          Number::real(-0.0),
          numberOf(1),
          Value::boolean(true),
          Number::real(1.0),
          Number::real(1.5),
          Number::real(1.5F),
          Number::integer(std::numeric_limits<std::uint64_t>::max()),
          numberOf(-1),
          Number::real(std::numeric_limits<double>::quiet_NaN()),
          Number::real(std::numeric_limits<float>::quiet_NaN()),
          stringOf("1"),
          stringOf(""),
          stringOf("any"),
          stringOf("any"),
          arrayOf({}),
          arrayOf({numberOf(1)}),
          arrayOf({Number::real(1.0)}),
          arrayOf({numberOf(2)}),
          dictionaryOf({}),
          dictionaryOf({{stringOf("a"), numberOf(1)}, {stringOf("b"), numberOf(2)}}),
          dictionaryOf({{stringOf("b"), numberOf(2)}, {stringOf("a"), Value::boolean(true)}}),
          Data::create("bytes"),
          Data::create("bytes"),
          Date::create(1),
          Date::create(1),
          make<OtherObject>(1),
          make<OtherObject>(2),
          make<OtherObject>(3)};
}

bool walkFinds(const ValueVector& list, const Value& value) {
  for (const Value& element : list) {
    if (equal(element, value)) return true;
  }
  return false;
}

TEST(ElementSet, AnswersAsAWalkThroughTheListDoes) {
  const ValueVector values = valuesOfAllKinds();
  // Of every start, so that each value is met before and behind the ones that it equals.
  for (std::size_t start = 0; start < values.size(); ++start) {
    ElementSet set;
    ValueVector list;
    for (std::size_t i = 0; i < values.size(); ++i) {
      const Value& value = values[(start + i * 7) % values.size()];
      const bool found = walkFinds(list, value);
      EXPECT_EQ(set.contains(value), found) << shown(value);
      EXPECT_EQ(set.insert(value), !found) << shown(value);
      if (!found) list.push_back(value);
      for (const Value& other : values) {
        EXPECT_EQ(set.contains(other), walkFinds(list, other)) << shown(other);
      }
    }
  }
}

TEST(ElementSet, HoldsTheElementsOfAnArray) {
  const Value list = arrayOf({numberOf(1), stringOf("a"), numberOf(1)});
  const ElementSet set(*castTo<Array>(list));
  EXPECT_TRUE(set.contains(Value::boolean(true)));
  EXPECT_TRUE(set.contains(stringOf("a")));
  EXPECT_FALSE(set.contains(stringOf("b")));
}

TEST(ElementSet, HoldsManyElements) {
  constexpr std::int64_t kMany = 5000;
  const Value list = rangeOf(kMany);
  ElementSet set;
  for (const Value& element : *castTo<Array>(list)) EXPECT_TRUE(set.insert(element));
  for (std::int64_t i = 0; i < kMany; ++i) {
    EXPECT_TRUE(set.contains(Number::real(static_cast<double>(i))));
    EXPECT_FALSE(set.contains(numberOf(i + kMany)));
  }
}

TEST(ElementSet, IsEmptyAtFirst) {
  const ElementSet set;
  EXPECT_FALSE(set.contains(numberOf(0)));
  EXPECT_FALSE(set.contains(Value::null()));
  EXPECT_FALSE(ElementSet(*Array::create()).contains(Value()));
}

}  // namespace
}  // namespace commandfilter::testing
