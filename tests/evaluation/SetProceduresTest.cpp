#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "expression/Expressions.h"
#include "runtime/Comparison.h"
#include "runtime/ValueVector.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Values = ValueVector;

bool holds(const Values& list, const Value& value) {
  for (const Value& element : list) {
    if (equal(element, value)) return true;
  }
  return false;
}

// The procedures with a walk for every membership, as they are written down.
Values excluded(const Values& a, const Values& b) {
  Values taken;
  for (const Value& element : a) {
    if (!holds(b, element) && !holds(taken, element)) taken.push_back(element);
  }
  return taken;
}
Values intersected(const Values& a, const Values& b) {
  Values taken;
  for (const Value& element : b) {
    if (holds(a, element) && !holds(taken, element)) taken.push_back(element);
  }
  return taken;
}
Values united(const Values& a, const Values& b) {
  Values taken;
  for (const Values* side : {&a, &b}) {
    for (const Value& element : *side) {
      if (!holds(taken, element)) taken.push_back(element);
    }
  }
  return taken;
}

TEST(SetProcedures, GiveWhatAWalkThroughTheListsGives) {
  // Equal values that can be told from each other show which one was taken.
  const Values variety{numberOf(1),     Number::real(1.0),      Value::boolean(true),
                       numberOf(0),     Number::real(-0.0),     stringOf("1"),
                       stringOf("a"),   stringOf(""),           Value::null(),
                       arrayOf({}),     arrayOf({numberOf(1)}), arrayOf({Value::boolean(true)}),
                       dictionaryOf({})};
  std::mt19937 random(3);  // NOLINT: the same numbers at every run
  for (int round = 0; round < 300; ++round) {
    const auto draw = [&variety, &random] {
      Values values(1 + random() % 12);
      for (Value& value : values) value = variety[random() % variety.size()];
      return values;
    };
    const Values a = draw();
    const Values b = draw();
    const Ref<TestContext> context =
        TestContext::create({{"a", Array::create(a)}, {"b", Array::create(b)}});
    EXPECT_EQ(resultOf("_Exclude(@a, @b)", context), shown(Array::create(excluded(a, b))));
    EXPECT_EQ(resultOf("_Intersect(@a, @b)", context), shown(Array::create(intersected(a, b))));
    EXPECT_EQ(resultOf("_Union(@a, @b)", context), shown(Array::create(united(a, b))));
  }
}

TEST(SetProcedures, EvaluateBothListsAlways) {
  for (const std::string_view name : {"_Exclude", "_Intersect", "_Union"}) {
    const Ref<TestContext> context = TestContext::create();
    const std::string call(name);
    EXPECT_EQ(resultOf(call + R"((_Call("a"), _Call("b")))", context), "nil");
    EXPECT_THAT(context->calls, ElementsAre("a", "b"));
    EXPECT_EQ(errorOf(*context), "");
    context->calls.clear();
    EXPECT_EQ(resultOf(call + R"((_Call("a"), _Call("b"), _Call("c")))", context), "nil");
    EXPECT_EQ(resultOf(call + R"(_Call("a"))", context), "nil");
    EXPECT_EQ(resultOf(call + "()", context), "nil");
    EXPECT_THAT(context->calls, IsEmpty());
    EXPECT_EQ(errorOf(*context), "2: Incorrect number of arguments in " + call);
  }
}

TEST(Union, GivesALoneListAsItIs) {
  const Value list = arrayOf({numberOf(1), numberOf(1)});
  const Ref<TestContext> context =
      TestContext::create({{"list", list}, {"table", dictionaryOf({{numberOf(1), numberOf(2)}})}});
  for (const std::string_view expression :
       {"_Union(@list, @table)", "_Union(@table, @list)", "_Union(@list, _Array())",
        "_Union(@nil, @list)", "_Union(@list, 5)"}) {
    EXPECT_TRUE(evaluate(expression, context).isIdenticalTo(list)) << expression;
  }
  EXPECT_EQ(resultOf("_Union(_Array(), @table)", context), "nil");
}

TEST(SetProcedures, TakeAMillionElements) {
  constexpr std::int64_t kMillion = 1'000'000;
  const Ref<TestContext> context = TestContext::create({{"list", rangeOf(kMillion)}});
  EXPECT_EQ(resultOf("_GetSize(_Union(@list, @list))", context), "1000000Q");
  EXPECT_EQ(resultOf("_GetSize(_Intersect(@list, @list))", context), "1000000Q");
  EXPECT_EQ(resultOf("_GetSize(_Exclude(@list, @list))", context), "0Q");
}

}  // namespace
}  // namespace commandfilter::testing
