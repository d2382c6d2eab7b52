// What the collection procedures evaluate, and what they do with large collections.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "expression/Expressions.h"
#include "runtime/Date.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The labels that an expression calls, in order.
std::vector<std::string> callsOf(std::string_view expression, TestContext::Names names = {}) {
  const Ref<TestContext> context = TestContext::create(std::move(names));
  static_cast<void>(evaluate(expression, context));
  return context->calls;
}

TEST(CollectionProcedures, EvaluateTheirArgumentsOnlyAsFarAsTheyMust) {
  const TestContext::Names names{{"list", arrayOf({numberOf(5), numberOf(6)})},
                                 {"table", dictionaryOf({{numberOf(1), stringOf("one")}})}};
  const auto calls = [&names](std::string_view expression) { return callsOf(expression, names); };
  EXPECT_THAT(calls(R"(_Translate(_Call("a", @nil), _Call("b")))"), ElementsAre("a", "b"));
  EXPECT_THAT(calls(R"(_Translate(_Call("a"), _Call("b"), _Call("c")))"), IsEmpty());
  EXPECT_THAT(calls(R"(_GetKey(_Call("a", @list), _Call("b", 6), _Call("c")))"),
              ElementsAre("a", "b"));
  EXPECT_THAT(calls(R"(_GetKey(_Call("a", @list), _Call("b", 7), _Call("c")))"),
              ElementsAre("a", "b", "c"));
  EXPECT_THAT(calls(R"(_GetKey(_Call("a"), _Call("b"), _Call("c")))"), ElementsAre("a", "c"));
  EXPECT_THAT(calls(R"(_GetKey(_Call("a", 1), _Call("b"), _Call("c")))"), ElementsAre("a"));
  EXPECT_THAT(calls(R"(_GetItem(_Call("a", @table), _Call("b", 1), _Call("c")))"),
              ElementsAre("a", "b"));
  EXPECT_THAT(calls(R"(_GetItem(_Call("a", @table), _Call("b"), _Call("c")))"),
              ElementsAre("a", "b", "c"));
  EXPECT_THAT(calls(R"(_GetItem(_Call("a", @list), _Call("b"), _Call("c")))"),
              ElementsAre("a", "b"));
  EXPECT_THAT(calls(R"(_GetItem(_Call("a"), _Call("b"), _Call("c")))"), ElementsAre("a", "c"));
  EXPECT_THAT(calls(R"(_In(_Call("a", 5), _Call("b", 4), _Call("c", 5), _Call("d")))"),
              ElementsAre("a", "b", "c"));
  EXPECT_THAT(calls(R"(_Contains(_Call("a", @list), _Call("b", 5), _Call("c", 4), _Call("d")))"),
              ElementsAre("a", "b", "c"));
  EXPECT_THAT(calls(R"(_MaxValue(_Call("a"), _Call("b")))"), IsEmpty());
  EXPECT_THAT(calls(R"(_GetSize(_Call("a"), _Call("b")))"), IsEmpty());
  EXPECT_THAT(calls(R"(_AllKeys(_Call("a")))"), ElementsAre("a"));
  EXPECT_THAT(calls(R"(_Dictionary(_Call("value"), _Call("key")))"), ElementsAre("value", "key"));
  EXPECT_THAT(calls(R"(_Dictionary(_Call("value")))"), IsEmpty());
}

TEST(CollectionProcedures, GiveNumbersOfTheirEncodings) {
  const Ref<TestContext> context =
      TestContext::create({{"list", arrayOf({stringOf("a"), stringOf("b")})},
                           {"table", dictionaryOf({{stringOf("k"), stringOf("v")}})}});
  EXPECT_EQ(resultOf("_Array(_GetSize(@list), _GetSize(@table), _GetSize(@nil))", context),
            "[2Q, 1Q, 0Q]");
  EXPECT_EQ(resultOf(R"(_GetKey(@list, "b"))", context), "1Q");
  EXPECT_EQ(resultOf("_AllKeys(@list)", context), "[0i, 1i]");
  EXPECT_EQ(resultOf(R"(_Array(_In(1, 2), @list _Contains "b"))", context), "[0c, 1c]");
}

TEST(Translate, TakesAMaskOf64Bits) {
  const Ref<TestContext> context = TestContext::create(
      {{"table", dictionaryOf({{Number::integer(std::uint64_t{1} << 63U), stringOf("high")},
                               {numberOf(-1), stringOf("all")},
                               {stringOf("1"), stringOf("text")},
                               {Number::real(2.5), stringOf("two")},
                               {Value::boolean(false), stringOf("none")}})},
       {"all", Number::integer(UINT64_MAX)},
       {"high", Number::integer(std::uint64_t{1} << 63U)}});
  EXPECT_EQ(resultOf("_Translate(@all, @table)", context), R"(["high", "all", "two", "none"])");
  EXPECT_EQ(resultOf("_Translate(@high, @table)", context), R"(["high", "none"])");
  EXPECT_EQ(resultOf("_Translate(-1, @table)", context), R"(["high", "all", "two", "none"])");
  EXPECT_EQ(resultOf("_Translate(2, @table)", context), R"(["two", "none"])");
}

TEST(Translate, FindsNumbersOfOtherEncodings) {
  const Ref<TestContext> context =
      TestContext::create({{"codes", arrayOf({Number::real(1.0), Value::boolean(true),
                                              Value::null(), stringOf("1"), numberOf(2)})}});
  EXPECT_EQ(resultOf(R"(_Translate(@codes, _Dictionary("one", 1)))", context), R"(["one", "one"])");
}

TEST(GetItem, ReadsAnIndexAs32Bits) {
  const Ref<TestContext> context =
      TestContext::create({{"list", rangeOf(3)}, {"half", Number::real(1.9)}});
  EXPECT_EQ(resultOf("_GetItem(@list, 4294967297)", context), "1q");
  EXPECT_EQ(resultOf("_GetItem(@list, -4294967294)", context), "2q");
  EXPECT_EQ(resultOf("_GetItem(@list, -1, 7)", context), "7q");
  EXPECT_EQ(resultOf("_GetItem(@list, @half)", context), "1q");
  EXPECT_EQ(resultOf("_GetItem(@list, @true)", context), "1q");
}

TEST(GetItem, GivesTheNullObjectAsItIs) {
  const Ref<TestContext> context = TestContext::create({{"list", arrayOf({Value::null()})}});
  EXPECT_EQ(resultOf("_GetItem(@list, 0, 7)", context), "<null>");
}

TEST(MaxValue, OrdersWhatCanBeOrdered) {
  const Value late = Date::create(10);
  const Ref<TestContext> context = TestContext::create(
      {{"dates", arrayOf({Date::create(1), late, Date::create(10)})},
       {"nulls", arrayOf({Value::null()})},
       {"mixed", arrayOf({numberOf(9), stringOf("a")})},
       {"table",
        dictionaryOf({{stringOf("a"), numberOf(1)}, {stringOf("b"), Number::real(1.5)}})}});
  EXPECT_TRUE(evaluate("_MaxValue(@dates)", context).isIdenticalTo(late));
  EXPECT_EQ(resultOf("_MaxValue(@nulls)", context), "<null>");
  EXPECT_EQ(resultOf("_MaxValue(@mixed)", context), "nil");
  EXPECT_EQ(resultOf("_MaxValue(@table)", context), "1.5d");
  EXPECT_EQ(errorOf(*context), "");
}

TEST(MaxValue, LetsOtherExceptionsThrough) {
  const Ref<TestContext> context = TestContext::create();
  context->functions["raise"] = [](TestContext&, const Array*) -> Value {
    throw Exception("from the argument");
  };
  EXPECT_EQ(reasonOf([&] { static_cast<void>(evaluate(R"(_MaxValue(_Run("raise")))", context)); }),
            "from the argument");
}

TEST(Contains, AnswersTheSameForFewAndForManyValues) {
  const Ref<TestContext> context = TestContext::create(
      {{"list", arrayOf({numberOf(1), numberOf(2), stringOf("a"), Value::null(), arrayOf({})})}});
  for (const std::size_t many : {1U, 20U}) {
    const std::string found = repeated(R"(, 1, 2, "a", @nil, @true, _Array())", many);
    EXPECT_EQ(resultOf("_Contains(@list" + found + ")", context), "1c");
    EXPECT_EQ(resultOf("_Contains(@list" + found + ", 3)", context), "0c");
    EXPECT_EQ(resultOf("_Contains(@list, \"1\"" + found + ")", context), "0c");
  }
}

TEST(Dictionary, KeepsThePlaceOfAReplacedKey) {
  EXPECT_EQ(resultOf(R"(_Dictionary("a", 1, "b", 2, "c", @true, @nil, 2, "d", @nil))"),
            R"({1q: "c", 2q: "b"})");
}

TEST(Collections, MayHoldAMillionElements) {
  constexpr std::int64_t kMillion = 1'000'000;
  const Ref<TestContext> context = TestContext::create({{"list", rangeOf(kMillion)}});
  EXPECT_EQ(resultOf("_GetKey(@list, 999999)", context), "999999Q");
  EXPECT_EQ(resultOf("_GetItem(@list, 999999)", context), "999999q");
  EXPECT_EQ(resultOf("_MaxValue(@list)", context), "999999q");
  EXPECT_EQ(resultOf("_GetSize(_AllKeys(@list))", context), "1000000Q");
  EXPECT_EQ(resultOf("@list _Contains(999999, -1)", context), "0c");
  EXPECT_EQ(resultOf("_GetSize(_Translate(@list, _Dictionary(1, 5)))", context), "1Q");
}

}  // namespace
}  // namespace commandfilter::testing
