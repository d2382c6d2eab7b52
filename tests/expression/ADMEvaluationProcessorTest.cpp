#include "expression/ADMEvaluationProcessor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "expression/Expressions.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;

TEST(Processor, EvaluatesTheWholeTreeAtEachExecute) {
  const Ref<TestContext> context = TestContext::create({{"n", numberOf(1)}});
  const Ref<ADMEvaluationProcessor> processor =
      compile(R"(_Call("a", @n) + _Call("b", 2))", context);
  EXPECT_EQ(shown(processor->execute()), R"("12")");
  context->names["n"] = numberOf(3);
  EXPECT_EQ(shown(processor->execute()), R"("32")");
  EXPECT_THAT(context->calls, ElementsAre("a", "b", "a", "b"));
}

TEST(Processor, EvaluatesOneTreeAgainstTwoContexts) {
  const Ref<TestContext> first = TestContext::create({{"n", stringOf("one")}});
  const Ref<TestContext> second = TestContext::create({{"n", stringOf("two")}});
  const Ref<ADMEvaluationProcessor> processor = compile(R"((@n lt 1) or @n + _Call(@n))", first);
  EXPECT_EQ(shown(processor->executeWithContext(*second)), R"("two")");
  EXPECT_EQ(shown(processor->execute()), R"("one")");
  EXPECT_EQ(errorOf(*first), "2: Incorrect types for comparison operation");
  EXPECT_EQ(errorOf(*second), errorOf(*first));
  EXPECT_NE(first->lastError(), second->lastError());
  EXPECT_THAT(first->calls, ElementsAre("one"));
  EXPECT_THAT(second->calls, ElementsAre("two"));
}

TEST(Processor, CompilesOnce) {
  const Ref<ADMEvaluationProcessor> processor = compile("1");
  const ADMEvaluationItemBase* root = processor->rootItem();
  processor->compileExpression(String::create("2"));
  EXPECT_EQ(processor->rootItem(), root);
  EXPECT_EQ(shown(processor->execute()), "1q");
}

TEST(Processor, CompilesAgainAfterAFailure) {
  const Ref<ADMEvaluationProcessor> processor = compile("1 2");
  EXPECT_EQ(processor->rootItem(), nullptr);
  processor->compileExpression(String::create("2"));
  EXPECT_EQ(shown(processor->execute()), "2q");
}

TEST(Processor, IsNilWithoutAnotherErrorWhenItDoesNotCompile) {
  const Ref<TestContext> context = TestContext::create();
  const Ref<ADMEvaluationProcessor> processor = compile("(1", context);
  EXPECT_EQ(errorOf(*context), "1: Incorrect brace balance");
  context->clearErrors();
  EXPECT_TRUE(processor->execute().isNil());
  EXPECT_EQ(errorOf(*context), "");
}

TEST(Processor, KeepsItsContextAlive) {
  const Ref<ADMEvaluationProcessor> processor =
      compile("@n", TestContext::create({{"n", numberOf(7)}}));
  EXPECT_EQ(shown(processor->execute()), "7q");
}

TEST(Processor, GivesTheItemsOfAListUnevaluated) {
  const Ref<TestContext> context = TestContext::create();
  const Value value = evaluate(R"(_Call("a"), (2, _Call("b")))", context);
  const auto* list = castTo<ADMItemsList>(value);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->items()->count(), 3U);
  EXPECT_TRUE(context->calls.empty());
}

TEST(Processor, LeavesTheLexersErrorWhenTheRestCompiles) {
  const Ref<TestContext> context = TestContext::create();
  EXPECT_EQ(resultOf("1 + 1.5", context), R"("11")");
  EXPECT_EQ(errorOf(*context), "0: Incorrect token . at 6");
}

}  // namespace
}  // namespace commandfilter::testing
