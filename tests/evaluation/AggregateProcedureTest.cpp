// What the aggregate procedures do that single expressions do not show.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "expression/Expressions.h"
#include "expression/TestService.h"
#include "runtime/SizeLimits.h"
#include "runtime/ValueVector.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;

Ref<TestContext> contextWithList(Value list) {
  return TestContext::create({{"list", std::move(list)}});
}

TEST(Sort, InsertsBehindSmallerKeysAndNilKeysAtTheEnd) {
  const Ref<TestContext> context = contextWithList(
      arrayOf({numberOf(3), Value::null(), numberOf(1), stringOf("x"), numberOf(2), numberOf(1)}));
  EXPECT_EQ(resultOf("_Sort(@list, @element _In(1, 2, 3) then @element else @nil)", context),
            "[1q, 1q, 2q, 3q, <null>, \"x\"]");
  EXPECT_EQ(resultOf("_Sort(@list, 1)", context), "[<null>, 1q, \"x\", 2q, 1q, 3q]");
  EXPECT_EQ(resultOf("_Sort(@list, @nil)", context), shown(context->names["list"]));
}

TEST(Sort, ShowsTheElementsSoFar) {
  const Ref<TestContext> context =
      contextWithList(arrayOf({numberOf(3), numberOf(1), numberOf(2)}));
  EXPECT_EQ(resultOf("_Sort(@list, _GetSize(@initial))", context), "[3q, 1q, 2q]");
  EXPECT_EQ(resultOf("_Sort(@list, 5 bitxor _GetSize(@initial))", context), "[1q, 3q, 2q]");
  EXPECT_EQ(resultOf("_Sort(@list, _GetItem(@initial, 0, 7))", context), "[2q, 1q, 3q]");
}

TEST(Sort, GivesWhatItHasWhenAKeyFails) {
  const Ref<TestContext> context =
      contextWithList(arrayOf({numberOf(3), numberOf(1), stringOf("x"), numberOf(0)}));
  EXPECT_EQ(resultOf("_Sort(@list, (@element lt 100) then @element else @nil)", context),
            "[1q, 3q]");
  EXPECT_EQ(errorOf(*context), "");
}

TEST(Sort, RaisesForKeysThatCannotBeCompared) {
  const Ref<TestContext> context = contextWithList(arrayOf({numberOf(3), stringOf("x")}));
  EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluate("_Sort(@list, @element)", context)); }),
            "cannot order String against Number");
  EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluate("_Sort(@list, @list)", context)); }),
            "cannot order Array against Array");
}

TEST(Sort, EvaluatesNoKeyBehindOneThatCannotBeCompared) {
  const Ref<TestService> service = TestService::create();
  const Ref<TestContext> context =
      TestContext::create({{"list", arrayOf({numberOf(3), stringOf("x"), numberOf(1)})}}, service);
  EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluate("_Sort(@list, @same:)", context)); }),
            "cannot order String against Number");
  EXPECT_THAT(service->asked, ElementsAre("3", "x"));
}

TEST(Filter, ShowsTheElementsSoFar) {
  const Ref<TestContext> context = contextWithList(
      arrayOf({numberOf(1), numberOf(2), numberOf(1), Value::null(), numberOf(2), Value::null()}));
  EXPECT_EQ(resultOf("_Filter(@list, not (@initial _Contains(@element)))", context),
            "[1q, 2q, <null>]");
  EXPECT_EQ(resultOf("_Filter(@list, _GetSize(@initial) lt 2)", context), "[1q, 2q]");
}

TEST(Filter, GivesWhatItHasWhenAConditionFails) {
  const Ref<TestContext> context =
      contextWithList(arrayOf({numberOf(1), stringOf("x"), numberOf(2)}));
  EXPECT_EQ(resultOf("_Filter(@list, @element lt 100)", context), "[1q]");
  EXPECT_EQ(errorOf(*context), "");
}

TEST(Filter, ForgetsAnErrorThatTheConditionSurvived) {
  // The error of the first element ends the walk although the condition has a value.
  const Ref<TestContext> context = contextWithList(arrayOf({numberOf(1), numberOf(2)}));
  EXPECT_EQ(resultOf("_Filter(@list, (@element lt @nil) or 1)", context), "[]");
}

TEST(Conditions, HoldUnlessTheyAreNilOrEqualToNo) {
  const Ref<TestContext> context = TestContext::create();
  const auto holds = [&context](const Value& condition) {
    context->names["condition"] = condition;
    return resultOf("_Filter(_Array(1), @condition)", context) == "[1q]";
  };
  const Value failing[] = {Value(),           Value::boolean(false), numberOf(0),
                           Number::real(0.0), Number::real(-0.0),    Number::integer(0U)};
  for (const Value& condition : failing) {
    EXPECT_FALSE(holds(condition)) << shown(condition);
  }
  const Value holding[] = {Value::boolean(true), numberOf(-1), Number::real(0.5), stringOf(""),
                           stringOf("0"),        arrayOf({}),  dictionaryOf({})};
  for (const Value& condition : holding) {
    EXPECT_TRUE(holds(condition)) << shown(condition);
  }
}

TEST(Aggregate, LeavesTheAccumulatorOfTheLastGoodStep) {
  const Ref<TestContext> context =
      contextWithList(arrayOf({stringOf("a"), stringOf("b"), numberOf(1), stringOf("c")}));
  const std::string step = R"(@initial + @element + ((@element eq 1) then (1 lt "x") else @index))";
  EXPECT_EQ(resultOf("_Aggregate(@list, " + step + ", \"\")", context), R"("a0b1")");
  EXPECT_EQ(resultOf("_Aggregate(@list, @element eq 1 then (1 lt @nil) else @initial + @element)",
                     context),
            R"("ab")");
  EXPECT_EQ(resultOf("_AggregateIf(@list, 1, @element eq 1 then (1 lt @nil) else "
                     "@initial + @element, \"\")",
                     context),
            R"("ab")");
  EXPECT_EQ(errorOf(*context), "");
}

TEST(Aggregate, MayEndWithNil) {
  const Ref<TestContext> context = contextWithList(rangeOf(3));
  EXPECT_EQ(resultOf("_Aggregate(@list, @nil, 5)", context), "nil");
  EXPECT_EQ(resultOf("_AggregateIf(@list, @index, @nil, 5)", context), "nil");
  EXPECT_EQ(resultOf("_Aggregate(@list, @initial)", context), "nil");
}

TEST(Aggregate, DoesNotChangeAResultThatSomebodyKept) {
  const Ref<TestContext> context = contextWithList(rangeOf(3));
  EXPECT_EQ(resultOf(R"(_Aggregate(@list, @initial + _Array(
                @initial _GetItem(_GetSize(@initial) bitand 0, "") + @element), _Array("x")))",
                     context),
            R"(["x", "x0", "x1", "x2"])");
  // Every step's text goes into an array, and is extended afterwards.
  EXPECT_EQ(resultOf(R"(_Aggregate(@list,
                @initial + _Array(_GetItem(@initial, @index) + @element), _Array("x")))",
                     context),
            R"(["x", "x0", "x01", "x012"])");
}

TEST(Aggregate, PutsValuesBehindAnArrayAsTheOperatorDoes) {
  const Ref<TestContext> context =
      TestContext::create({{"list", arrayOf({numberOf(1), Value::null(), arrayOf({numberOf(2)})})},
                           {"start", arrayOf({stringOf("s")})}});
  for (const std::string_view values :
       {"@element", "@element + @index", "@nil", "@nil + @element", "(@element, 1)", "@true",
        "_GetSize(@initial)", "@initial", "@element + @initial + _GetSize(@initial)",
        "_Array() + @element", "(@index lt 1)", "((@index lt 2) or (1 lt @nil))",
        "@index + (@index ne 1 or (1 lt @nil))", "@initial ~ @index", "(@initial + @index)"}) {
    const std::string direct = "_Aggregate(@list, @initial + " + std::string(values) + ", @start)";
    // The operator sees another left side, and copies.
    const std::string copied =
        "_Aggregate(@list, (@nil or @initial) + " + std::string(values) + ", @start)";
    EXPECT_EQ(resultOf(direct, context), resultOf(copied, context)) << values;
    const std::string arguments = std::string(values) + ", @start)";
    EXPECT_EQ(
        resultOf("_AggregateIf(@list, @index lt 2, @initial + " + arguments, context),
        resultOf("_AggregateIf(@list, @index lt 2, (@nil or @initial) + " + arguments, context))
        << values;
    EXPECT_EQ(shown(context->names["start"]), R"(["s"])");
    EXPECT_EQ(errorOf(*context), "");
  }
}

TEST(Aggregate, GivesTheVeryArrayThatNothingWasPutBehind) {
  const Ref<TestContext> context = contextWithList(rangeOf(3));
  EXPECT_TRUE(evaluate("_Aggregate(@list, @initial + @nil, @list)", context)
                  .isIdenticalTo(context->names["list"]));
}

TEST(Aggregate, BuildsALongTextFromItsSteps) {
  const Ref<TestContext> context = contextWithList(rangeOf(1000));
  std::string expected = "start";
  for (int i = 0; i < 1000; ++i) expected += std::to_string(i) + ",";
  EXPECT_EQ(resultOf(R"(_Aggregate(@list, @initial + @element + ",", "start"))", context),
            '"' + expected + '"');
  EXPECT_EQ(resultOf(R"(_AggregateIf(@list, 1, @initial ~ @element ~ ",", "start"))", context),
            '"' + expected + '"');
}

TEST(Aggregate, KeepsAnAccumulatorThatIsAKeyOfItsOwn) {
  // The text becomes a key, whose hash must not change when the next step extends the text.
  const Ref<TestContext> context = contextWithList(arrayOf({stringOf("a"), stringOf("b")}));
  EXPECT_EQ(resultOf(R"(_Aggregate(@list, @initial + (@index,
                _Aggregate(@list, @initial + @element, "k") + @index), _Dictionary()))",
                     context),
            R"({"kab0": 0Q, "kab1": 1Q})");
}

TEST(Aggregations, AreEvaluatedInAContextOfTheirOwn) {
  const Ref<TestContext> context = contextWithList(rangeOf(2));
  EXPECT_EQ(
      resultOf(R"(_Array(_Call("a", @list) _Filter(1), _Sort(_Call("b", @list), 1)))", context),
      "[[0q, 1q], [1q, 0q]]");
  EXPECT_THAT(context->calls, ElementsAre("a", "b"));
}

TEST(Aggregations, ResolveNamesThroughAnyDepth) {
  const Ref<TestContext> context = TestContext::create({{"n", numberOf(7)}});
  EXPECT_EQ(resultOf("_Aggregate(_Array(1), _Aggregate(_Array(2), _Aggregate(_Array(3), "
                     "@n + @element + @initial, 5), @element))",
                     context),
            R"("735")");
}

TEST(Aggregations, MayBeNested100Deep) {
  // One element in each list: two would be 2^100 evaluations.
  const auto nestedIn = [](const std::string& procedure, const std::string& arguments) {
    return repeated(procedure + "(_Array(1), ", 100) + "@n" + repeated(arguments + ")", 100);
  };
  const Ref<TestContext> context = TestContext::create({{"n", numberOf(7)}});
  EXPECT_EQ(resultOf(nestedIn("_Aggregate", ""), context), "7q");
  EXPECT_EQ(resultOf(nestedIn("_Filter", ""), context), "[1q]");
  EXPECT_EQ(resultOf(nestedIn("_Sort", ""), context), "[1q]");
  EXPECT_EQ(resultOf(nestedIn("_AggregateIf", ", @n + @n, 1"), context), R"("77")");
}

TEST(Aggregations, MayLookAtTheirResultAtEveryElement) {
  // Copies of the result at every element would take minutes.
  const Ref<TestContext> context = contextWithList(rangeOf(100'000));
  EXPECT_EQ(resultOf("_GetSize(_Filter(@list, _GetSize(@initial) lt 1000000))", context),
            "100000Q");
  EXPECT_EQ(resultOf("_GetSize(_Filter(@list, @initial))", context), "100000Q");
  EXPECT_EQ(
      resultOf("_GetSize(_Aggregate(@list, @initial + _GetSize(@initial), _Array()))", context),
      "100000Q");
  EXPECT_EQ(resultOf("_GetSize(_AggregateIf(@list, _GetSize(@initial) lt 1000000, "
                     "@initial + @element, _Array()))",
                     context),
            "100000Q");
  context->names["list"] = rangeOf(20'000);
  EXPECT_EQ(resultOf("_GetItem(_Sort(@list, 0 bitxor _GetSize(@initial)), 19999)", context),
            "19999q");
}

TEST(Aggregations, BuildADictionaryStepByStep) {
  // Copies of the dictionary at every element would take minutes.
  const Ref<TestContext> context = contextWithList(rangeOf(100'000));
  EXPECT_EQ(resultOf("_GetSize(_Aggregate(@list, @initial + (@element, @index), _Dictionary()))",
                     context),
            "100000Q");
}

TEST(Aggregations, WalkOverAMillionElements) {
  constexpr std::int64_t kMillion = 1'000'000;
  const Ref<TestContext> context = contextWithList(rangeOf(kMillion));
  EXPECT_EQ(resultOf("_GetSize(_Filter(@list, @element bitand 1))", context), "500000Q");
  EXPECT_EQ(resultOf("_Aggregate(@list, @initial bitor @element)", context), "1048575i");
  EXPECT_EQ(resultOf("_GetItem(_Sort(@list, @element bitxor 65535), 0)", context), "65535q");
  EXPECT_EQ(resultOf("_GetSize(_Aggregate(@list, @initial + @index, _Array()))", context),
            "1000000Q");
  const Value text = evaluate(R"(_Aggregate(@list, @initial + "x"))", context);
  ASSERT_NE(castTo<String>(text), nullptr);
  EXPECT_EQ(castTo<String>(text)->text(), std::string(kMillion, 'x'));
}

TEST(Aggregate, StopsAtTheLargestArray) {
  const Ref<TestContext> context =
      TestContext::create({{"half", Array::create(ValueVector(kLargestArray / 2, numberOf(0)))}});
  for (const std::string_view step :
       {"@initial + @half", "@initial + 1 + @half", "@initial + @half + @half + 1"}) {
    EXPECT_EQ(reasonOf([&] {
                static_cast<void>(evaluate(
                    "_Aggregate(_Array(1, 2, 3), " + std::string(step) + ", _Array())", context));
              }),
              "a value is too large")
        << step;
  }
}

}  // namespace
}  // namespace commandfilter::testing
