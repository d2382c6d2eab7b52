// What of the lexer no expression shows.
#include "expression/ADMEvaluationLexer.h"

#include <gtest/gtest.h>

#include "expression/Expressions.h"

namespace commandfilter::testing {
namespace {

Ref<ADMEvaluationLexer> lexerOf(std::string_view expression,
                                const Ref<ADMEvaluationContext>& context = TestContext::create()) {
  return ADMEvaluationLexer::initWithExpressionString_evaluationContext(
      String::create(std::string(expression)), context);
}

TEST(Lexer, StandsAtTheStartAtFirst) {
  const Ref<ADMEvaluationLexer> lexer = lexerOf("5");
  EXPECT_EQ(lexer->currentPosition(), 0U);
  EXPECT_EQ(codeOf(lexer->previousType()), 52);
}

TEST(Lexer, RemembersTheTypeOfItsLastItem) {
  const Ref<ADMEvaluationLexer> lexer = lexerOf(R"("a" 1 $a [a] @a {a} , | & = != lt le gt ge + ~
      bitand bitor bitxor ! _a ( ))");
  for (const int code :
       {0, 1, 2, 3, 4, 5, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 50, 51}) {
    const RefPtr<ADMEvaluationItemBase> item = lexer->nextItem();
    ASSERT_TRUE(item) << code;
    EXPECT_EQ(codeOf(item->type()), code);
    EXPECT_EQ(codeOf(lexer->previousType()), code);
  }
  EXPECT_FALSE(lexer->nextItem());
  EXPECT_EQ(codeOf(lexer->previousType()), 51);
}

TEST(Lexer, StaysOneBehindTheEnd) {
  for (const std::string_view expression : {"", "  ", "5", "5 ", "\"a\"", "$a", "[a", "{a}", "!"}) {
    const Ref<TestContext> context = TestContext::create();
    const Ref<ADMEvaluationLexer> lexer = lexerOf(expression, context);
    while (lexer->nextItem()) {
    }
    EXPECT_EQ(lexer->currentPosition(), expression.size() + 1) << expression;
    EXPECT_FALSE(lexer->nextItem());
    EXPECT_EQ(lexer->currentPosition(), expression.size() + 1) << expression;
    EXPECT_EQ(errorOf(*context), "");
  }
}

TEST(Lexer, ReadsABlankBehindATokenAndNothingElse) {
  for (const std::string_view token :
       {"12", "0x1F", "$a", "@a:", "_a", "{a}", "{a}[k]", "{a}.b", "{a}[k].b", "and"}) {
    for (const char blank : {' ', '\t', '\r', '\n'}) {
      const Ref<ADMEvaluationLexer> lexer = lexerOf(std::string(token) + blank + "(");
      ASSERT_TRUE(lexer->nextItem());
      EXPECT_EQ(lexer->currentPosition(), token.size() + 1) << token;
    }
    const Ref<ADMEvaluationLexer> lexer = lexerOf(std::string(token) + "(");
    ASSERT_TRUE(lexer->nextItem());
    EXPECT_EQ(lexer->currentPosition(), token.size()) << token;
  }
}

TEST(Lexer, KeepsItsExpressionAndItsContext) {
  const Ref<ADMEvaluationLexer> lexer = lexerOf("$a");
  const RefPtr<ADMEvaluationItemBase> item = lexer->nextItem();
  ASSERT_TRUE(item);
  EXPECT_EQ(printedTree(*item), "$a");
}

TEST(Lexer, NotesItsErrorsOnTheContext) {
  const Ref<TestContext> context = TestContext::create();
  EXPECT_FALSE(lexerOf("#", context)->nextItem());
  EXPECT_EQ(errorOf(*context), "0: Incorrect token # at 1");
  EXPECT_FALSE(lexerOf("\"abc", context)->nextItem());
  EXPECT_EQ(errorOf(*context), "0: String parsing error at 5");
  EXPECT_FALSE(lexerOf("foo", context)->nextItem());
  EXPECT_EQ(errorOf(*context), "0: Incorrect operator at 4");
  context->clearErrors();
  EXPECT_FALSE(lexerOf("{a", context)->nextItem());
  EXPECT_FALSE(lexerOf("{a}[k", context)->nextItem());
  EXPECT_EQ(errorOf(*context), "");
}

}  // namespace
}  // namespace commandfilter::testing
