#include "expression/SharedPath.h"

#include <gtest/gtest.h>

#include <string>

#include "expression/ADMEvaluationFeaturePath.h"
#include "expression/Expressions.h"

namespace commandfilter::testing {
namespace {

const Array& componentsIn(const ADMEvaluationProcessor& processor) {
  return *dynamic_cast<const ADMEvaluationFeaturePath&>(*processor.rootItem()).featurePath();
}

TEST(SharedPath, IsOneForAllExpressionsThatWriteItAlike) {
  const Ref<ADMEvaluationProcessor> first = compile("{Supplies}[Black].Level");
  const Ref<ADMEvaluationProcessor> second = compile("  {Supplies}[Black].Level ");
  EXPECT_EQ(&componentsIn(*first), &componentsIn(*second));
  EXPECT_EQ(shown(Value::sharing(&componentsIn(*first))), R"(["Supplies", "Level", "Black"])");
}

TEST(SharedPath, IsNotSharedByOneThatIsWrittenInAnotherWay) {
  const Ref<ADMEvaluationProcessor> first = compile("{a}.b");
  const Ref<ADMEvaluationProcessor> second = compile("{ a}.b");
  EXPECT_NE(&componentsIn(*first), &componentsIn(*second));
  EXPECT_EQ(shown(Value::sharing(&componentsIn(*second))), R"(["a", "b"])");
}

// Paths of one length, first and last character have one place.
TEST(SharedPath, IsToldFromOthersThatWantItsPlace) {
  const Ref<ADMEvaluationProcessor> first = compile("{axb}.c");
  {
    const Ref<ADMEvaluationProcessor> second = compile("{ayb}.c");
    EXPECT_EQ(shown(Value::sharing(&componentsIn(*first))), R"(["axb", "c"])");
    EXPECT_EQ(shown(Value::sharing(&componentsIn(*second))), R"(["ayb", "c"])");
    const Ref<ADMEvaluationProcessor> third = compile("{axb}.c");
    EXPECT_EQ(shown(Value::sharing(&componentsIn(*third))), R"(["axb", "c"])");
  }
  const Ref<ADMEvaluationProcessor> last = compile("{ayb}.c");
  EXPECT_EQ(shown(Value::sharing(&componentsIn(*last))), R"(["ayb", "c"])");
}

TEST(SharedPath, IsMadeAnewOnceNothingHoldsIt) {
  for (int i = 0; i < 3; ++i) {
    const Ref<ADMEvaluationProcessor> processor = compile("{Gone}.again");
    EXPECT_EQ(shown(Value::sharing(&componentsIn(*processor))), R"(["Gone", "again"])");
  }
}

TEST(SharedPath, IsHeldByItsItems) {
  RefPtr<ADMEvaluationProcessor> first = compile("{Held}.here");
  const Array* components = &componentsIn(*first);
  const Ref<ADMEvaluationProcessor> second = compile("{Held}.here");
  first = nullptr;
  EXPECT_EQ(&componentsIn(*compile("{Held}.here")), components);
}

TEST(SharedPath, OfTextBeyondASCIIIsReadLikeAnyOther) {
  const Ref<ADMEvaluationProcessor> processor = compile("{Tr\u00E4ger}[\u20AC].\u00DCber.b");
  EXPECT_EQ(shown(Value::sharing(&componentsIn(*processor))),
            "[\"Tr\u00E4ger\", \"\u00DCber\", \"b\", \"\u20AC\"]");
}

TEST(SharedPath, SplitsWhatFollowsTheBraces) {
  const auto shownPath = [](std::string_view expression) {
    return shown(Value::sharing(&componentsIn(*compile(expression))));
  };
  EXPECT_EQ(shownPath("{a}"), R"(["a"])");
  EXPECT_EQ(shownPath("{a}."), R"(["a"])");
  EXPECT_EQ(shownPath("{a}.."), R"(["a", "", ""])");
  EXPECT_EQ(shownPath("{a}.b."), R"(["a", "b", ""])");
  EXPECT_EQ(shownPath("{a}[k]."), R"(["a", "k"])");
  EXPECT_EQ(shownPath("{a}[].b"), R"(["a", "b", ""])");
  EXPECT_EQ(shownPath("{}[ k ]"), R"(["", "k"])");
}

}  // namespace
}  // namespace commandfilter::testing
