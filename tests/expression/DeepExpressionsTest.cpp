// Expressions that are deeper or longer than any stack: they compile, evaluate or raise the
// platform exception, and are destroyed.
#include <gtest/gtest.h>

#include <ostream>

#include "expression/ADMEvaluationFeaturePath.h"
#include "expression/Expressions.h"

namespace commandfilter::testing {

struct DeepExpression {
  std::string_view name;
  std::string (*make)(std::size_t depth);
  std::string_view result;
  /// The tree is as deep as the expression.
  bool isDeepTree = true;
  std::size_t greatDepth = 100'000;
};

static void PrintTo(const DeepExpression& expression, std::ostream* stream) {
  *stream << expression.name;
}

namespace {

constexpr std::size_t kDeep = 1'000'000;
// Enough for a stack of 8 MB, and made in a tenth of the time.
constexpr std::size_t kDeepEnough = 100'000;
constexpr std::size_t kShallow = 200;
constexpr std::string_view kTooDeep = "nested too deeply";

std::string nested(std::string_view opening, std::string_view innermost, std::string_view closing,
                   std::size_t depth) {
  return repeated(opening, depth) + std::string(innermost) + repeated(closing, depth);
}

const DeepExpression kDeepExpressions[] = {
    {"Braces", [](std::size_t depth) { return nested("(", "7", ")", depth); }, "7q", false,
     1'000'000},
    {"PrefixOperators", [](std::size_t depth) { return repeated("!", depth) + "@true"; }, "0c",
     false, 1'000'000},
    {"PrefixOperatorsInBraces",
     [](std::size_t depth) { return nested("not(", "@true", ")", depth); }, "1c", true, 1'000'000},
    {"PrefixCalls", [](std::size_t depth) { return repeated("_GetSize ", depth) + "_Array()"; },
     "[]", false},
    {"PrefixCallsInBraces",
     [](std::size_t depth) { return nested("_MaxValue(_Array(", "7", "))", depth); }, "7q"},
    {"MemberCalls", [](std::size_t depth) { return "7" + repeated(" _In(7)", depth); }, "0c", true,
     1'000'000},
    {"MemberCallsInBraces", [](std::size_t depth) { return nested("1 _In(", "1", ")", depth); },
     "1c"},
    {"Sums", [](std::size_t depth) { return "1" + repeated("+\"\"", depth); }, "\"1\""},
    {"SumsInBraces", [](std::size_t depth) { return nested("\"\"+(", "7", ")", depth); }, "\"7\""},
    {"Alternatives", [](std::size_t depth) { return repeated("@nil or ", depth) + "7"; }, "7q"},
    {"Comparisons", [](std::size_t depth) { return "1" + repeated(" ge 1", depth); }, "1c"},
    {"Arguments",
     [](std::size_t depth) { return "_GetSize(_Array(1" + repeated(",1", depth - 1) + "))"; },
     "200Q", false},
    {"ArgumentsInBraces",
     [](std::size_t depth) {
       return "_GetSize(_Array(" + nested("(1,", "1", ")", depth - 1) + "))";
     },
     "200Q", false, 1'000'000},
};

class DeepExpressions : public ::testing::TestWithParam<DeepExpression> {};

INSTANTIATE_TEST_SUITE_P(Kinds, DeepExpressions, ::testing::ValuesIn(kDeepExpressions),
                         [](const ::testing::TestParamInfo<DeepExpression>& tested) {
                           return std::string(tested.param.name);
                         });

TEST_P(DeepExpressions, EvaluateWhenTheyAreNotTooDeep) {
  EXPECT_EQ(resultOf(GetParam().make(kShallow)), GetParam().result);
}

// The stack of a process as it usually is.
constexpr std::size_t kStack = std::size_t{8} * 1024 * 1024;

void compileEvaluateAndPrint(const DeepExpression& tested) {
  const Ref<ADMEvaluationProcessor> processor = compile(tested.make(tested.greatDepth));
  ASSERT_NE(processor->rootItem(), nullptr);
  std::string reason = reasonOf([&processor] { static_cast<void>(processor->execute()); });
  EXPECT_EQ(reason, tested.isDeepTree ? kTooDeep : "");
  reason = reasonOf([&processor] { static_cast<void>(printedTree(*processor->rootItem())); });
  EXPECT_TRUE(reason.empty() || reason == kTooDeep) << reason;
}

TEST_P(DeepExpressions, NeverCrash) {
  runOnStackOf(kStack, [] { compileEvaluateAndPrint(GetParam()); });
}

TEST(LongExpressions, MissBracesByTheMillion) {
  const Ref<TestContext> context = TestContext::create();
  EXPECT_EQ(compile(repeated("(", kDeep), context)->rootItem(), nullptr);
  EXPECT_EQ(errorOf(*context), "1: Incorrect brace balance");
  context->clearErrors();
  EXPECT_EQ(compile("1" + repeated(")", kDeep), context)->rootItem(), nullptr);
  EXPECT_EQ(errorOf(*context), "1: Incorrect brace balance");
  for (const std::string_view broken : {"1 ", "=", "(,", "()", "_A("}) {
    EXPECT_EQ(compile(repeated(broken, kDeepEnough), context)->rootItem(), nullptr);
  }
}

TEST(LongExpressions, LeaveOutAMillionElements) {
  const Ref<ADMEvaluationProcessor> processor =
      compile("_GetSize(_Array(" + repeated(",", kDeep) + "1))");
  EXPECT_EQ(shown(processor->execute()), "1Q");
}

TEST(LongExpressions, HoldATextOf100Megabytes) {
  constexpr std::size_t kSize = 100'000'000;
  const Ref<TestContext> context = TestContext::create();
  {
    const Value text = evaluate('"' + std::string(kSize, 'x') + "\" + 1", context);
    ASSERT_NE(castTo<String>(text), nullptr);
    EXPECT_EQ(castTo<String>(text)->view().size(), kSize + 1);
  }
  EXPECT_EQ(compile('"' + std::string(kSize, 'x'), context)->rootItem(), nullptr);
  EXPECT_EQ(errorOf(*context), "1: Incorrect Expression");
}

TEST(LongExpressions, HoldNamesAndNumbersOfAMillionUnits) {
  const Ref<TestContext> context = TestContext::create();
  EXPECT_EQ(resultOf(std::string(kDeep, '9'), context), "9223372036854775807q");
  EXPECT_EQ(resultOf("@" + std::string(kDeep, 'n'), context), "nil");
  EXPECT_EQ(resultOf("_" + std::string(kDeep, 'n') + "()", context), "nil");
  EXPECT_EQ(castTo<String>(Value(context->lastError()->errorDescription()))->view().size(),
            std::string_view("Can not find procedure ").size() + kDeep);
  const Ref<ADMEvaluationProcessor> path = compile("{a}" + repeated(".a", kDeep), context);
  const auto* item =
      castTo<ADMEvaluationFeaturePath>(const_cast<ADMEvaluationItemBase*>(path->rootItem()));
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->featurePath()->count(), kDeep + 1);
}

TEST(LongExpressions, HoldNamesThatANullCharacterEnds) {
  // None of the names has a bracket behind it, so that each might be sought to the very end.
  std::string name = "[" + std::string(30, 'n') + '+';
  name[31] = '\0';
  const std::string expression = "5 " + repeated(name, kDeepEnough * 2);
  const Ref<TestContext> context = TestContext::create();
  EXPECT_EQ(compile(expression, context)->rootItem(), nullptr);
  EXPECT_EQ(errorOf(*context), "1: Incorrect Expression");
}

TEST(LongExpressions, ExtendADictionaryStepByStep) {
  constexpr std::size_t kSteps = 10'000;
  std::string expression = "_Dictionary()";
  for (std::size_t i = 0; i < kSteps; ++i) {
    expression.append("+(1,").append(std::to_string(i)).append(")");
  }
  EXPECT_EQ(resultOf("_GetSize(" + expression + ")"), "10000Q");
}

TEST(LongExpressions, LeaveTheProcessUsable) {
  runOnStackOf(kStack, [] {
    const Ref<TestContext> context = TestContext::create();
    const Ref<ADMEvaluationProcessor> deep = compile("1" + repeated("+1", kDeepEnough), context);
    for (int attempt = 0; attempt < 2; ++attempt) {
      EXPECT_EQ(reasonOf([&deep] { static_cast<void>(deep->execute()); }), kTooDeep);
      EXPECT_EQ(resultOf("1 + 1", context), "\"11\"");
    }
  });
}

}  // namespace
}  // namespace commandfilter::testing
