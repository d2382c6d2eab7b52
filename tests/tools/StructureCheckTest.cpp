#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/ADMEvaluationContextBase.h"
#include "expression/ADMEvaluationBinaryOperationBase.h"
#include "expression/ADMEvaluationProcessor.h"
#include "expression/ADMEvaluationUnaryOperationBase.h"
#include "language/CaseFile.h"
#include "runtime/Cast.h"
#include "tools/CheckedExpression.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What became of an expression, by the compiler itself.
class Compiled {
 public:
  explicit Compiled(const std::string& expression) {
    const Ref<ADMEvaluationContextBase> context =
        ADMEvaluationContextBase::initWithStatusService_globalConfiguration(Value(), nullptr);
    processor_ = ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
        String::create(expression), context);
    hasError_ = context->lastError() != nullptr || processor_->rootItem() == nullptr;
    if (!hasError_) look(*processor_->rootItem());
  }

  [[nodiscard]] bool hasError() const { return hasError_; }
  // True when the tree has every token, each operand on the side on which it stands.
  [[nodiscard]] bool isAsWritten(std::size_t tokens) const {
    return !hasError_ && isInOrder_ && items_ == tokens;
  }

 private:
  void look(const ADMEvaluationItemBase& item) {
    if (item.type() == ItemType::ClosingBrace) isInOrder_ = false;
    // What the compiler put in for an element that is left out is no token.
    const bool isInserted = item.type() == ItemType::String && item.sourceRange().isEmpty();
    if (item.type() == ItemType::EmptyArguments || isInserted) return;
    ++items_;
    auto* object = const_cast<ADMEvaluationItemBase*>(&item);  // NOLINT: looked at, not changed
    if (const auto* binary =
            castTo<ADMEvaluationBinaryOperationBase>(static_cast<Object*>(object))) {
      requireOrder(*binary->leftOperand(), item);
      requireOrder(item, *binary->rightOperand());
      look(*binary->leftOperand());
      look(*binary->rightOperand());
    } else if (const auto* unary =
                   castTo<ADMEvaluationUnaryOperationBase>(static_cast<Object*>(object))) {
      requireOrder(item, *unary->operand());
      look(*unary->operand());
    }
  }
  void requireOrder(const ADMEvaluationItemBase& left, const ADMEvaluationItemBase& right) {
    const bool isInserted = left.sourceRange().isEmpty() || right.sourceRange().isEmpty();
    if (!isInserted && left.sourceRange().begin > right.sourceRange().begin) isInOrder_ = false;
  }

  RefPtr<ADMEvaluationProcessor> processor_;
  bool hasError_ = true;
  bool isInOrder_ = true;
  std::size_t items_ = 0;
};

constexpr std::array<std::string_view, 9> kTokens{"1 ",  "\"x\" ", "not ", "_A ", "+ ",
                                                  "lt ", ", ",     "( ",   ") "};

// All sequences of so many tokens.
template <typename Visit>
void forEachExpression(std::size_t length, const Visit& visit) {
  std::vector<std::size_t> places(length);
  while (true) {
    std::string text;
    std::size_t tokens = 0;
    for (const std::size_t place : places) {
      text.append(kTokens[place]);
      tokens += place < 7 ? 1U : 0U;
    }
    visit(text, tokens);
    std::size_t digit = 0;
    while (digit < length && ++places[digit] == kTokens.size()) places[digit++] = 0;
    if (digit == length) return;
  }
}

TEST(StructureCheck, SaysSomethingAboutEveryExpressionThatIsNotCompiledAsWritten) {
  constexpr std::size_t kLongest = 5;
  for (std::size_t length = 0; length <= kLongest; ++length) {
    forEachExpression(length, [](const std::string& text, std::size_t tokens) {
      const Compiled compiled(text);
      if (!compiled.isAsWritten(tokens)) {
        ASSERT_FALSE(complaintsAbout(text).empty()) << text;
      }
    });
  }
}

// Expressions that the grammar of the language allows.
class Grammar {
 public:
  std::string expression(int depth) {
    std::string text = item(depth);
    while (choose(3) == 0) text.append(oneOf(kInfix)).append(item(depth));
    return text;
  }

 private:
  static constexpr std::array<std::string_view, 6> kInfix{" + ", " eq ", " or ",
                                                          " ~ ", " & ",  " bitand "};
  static constexpr std::array<std::string_view, 6> kOperands{"1",   "\"x\"", "$c",
                                                             "[v]", "@n",    "{a}[b].c"};

  std::string item(int depth) {
    std::string text = primary(depth);
    while (choose(4) == 0) text.append(" _M").append(arguments(depth));
    const std::size_t prefix = choose(6);
    if (prefix == 0) return "not " + text;
    // A prefix binds tighter than a call behind it, so this is one operand.
    return prefix == 1 ? "_F(" + text + ")" : text;
  }
  std::string primary(int depth) {
    if (depth > 0 && choose(3) == 0) return "(" + expression(depth - 1) + ")";
    if (choose(6) == 0) return "_P()";
    return std::string(oneOf(kOperands));
  }
  std::string arguments(int depth) {
    if (choose(3) == 0) return "()";
    if (choose(3) == 0) return " " + std::string(oneOf(kOperands));
    std::string text = "(";
    // Any element but the last may be left out.
    while (choose(2) == 0)
      text.append(choose(3) == 0 ? "" : item(depth > 0 ? depth - 1 : 0)).append(", ");
    return text + item(depth > 0 ? depth - 1 : 0) + ")";
  }
  std::size_t choose(std::size_t count) { return random_() % count; }
  template <std::size_t Count>
  std::string_view oneOf(const std::array<std::string_view, Count>& texts) {
    return texts[choose(Count)];
  }

  std::mt19937 random_{20'11};
};

TEST(StructureCheck, SaysNothingAboutWhatTheGrammarAllows) {
  Grammar grammar;
  for (int i = 0; i < 20'000; ++i) {
    const std::string text = grammar.expression(3);
    ASSERT_FALSE(Compiled(text).hasError()) << text;
    ASSERT_THAT(complaintsAbout(text), IsEmpty()) << text;
  }
}

TEST(StructureCheck, SaysNothingAboutTheExamplesOfTheLanguage) {
  std::size_t examples = 0;
  for (const Case& example : casesOfMarkdown(LANGUAGE_REFERENCE)) {
    if (example.error) continue;
    EXPECT_THAT(complaintsAbout(example.expression()), IsEmpty()) << example.expression();
    ++examples;
  }
  EXPECT_GT(examples, 100U);
}

TEST(StructureCheck, AgreesWithTheCompilerAboutAllCasesOfTheLanguage) {
  std::size_t compiledCases = 0;
  for (const Case& tested : casesOfFolder(LANGUAGE_CASES)) {
    const std::string expression = tested.expression();
    // The trees of longer ones are too deep for this test.
    if (expression.size() > 10'000) continue;
    if (Compiled(expression).hasError()) {
      EXPECT_FALSE(complaintsAbout(expression).empty()) << tested.file << ":" << tested.line;
    } else {
      ++compiledCases;
    }
  }
  EXPECT_GT(compiledCases, 500U);
}

TEST(StructureCheck, PointsAtWhatIsMissingOrTooMuch) {
  EXPECT_THAT(complaintsAbout(""), ElementsAre(": the expression is empty"));
  EXPECT_THAT(complaintsAbout("5 +"), ElementsAre("+: an operand is missing behind +"));
  EXPECT_THAT(complaintsAbout("+ 5"), ElementsAre("+: an operand is missing in front of +"));
  EXPECT_THAT(complaintsAbout("5 lt + 3"),
              ElementsAre("+: an operand is missing between lt and +"));
  EXPECT_THAT(complaintsAbout("5 3"), ElementsAre("3: an operator is missing in front of 3"));
  EXPECT_THAT(complaintsAbout("5 == 3"), ElementsAre("==: there is no operator =="));
  EXPECT_THAT(complaintsAbout("(5"), ElementsAre("(: nothing closes this brace"));
  EXPECT_THAT(complaintsAbout("5)"), ElementsAre("): no opening brace belongs to this one"));
  EXPECT_THAT(complaintsAbout("(1, )"), ElementsAre(",: the last element of the list is missing"));
  EXPECT_THAT(complaintsAbout("1 _Name"), ElementsAre("_Name: _Name has no arguments behind it"));
  EXPECT_THAT(complaintsAbout("not not 1"),
              ElementsAre("not: not loses its operand to not behind it"));
  EXPECT_THAT(complaintsAbout("_A _B 1"), ElementsAre("_B: _A loses its operand to _B behind it"));
  EXPECT_THAT(complaintsAbout("_A(, 1)"), IsEmpty());
}

TEST(StructureCheck, FindsEveryMistakeOfAnExpression) {
  EXPECT_THAT(complaintsAbout("(1 2 * foo == 3"),
              ElementsAre("*: the character * begins nothing", "foo: foo is no operator",
                          "2: an operator is missing in front of 2",
                          "==: there is no operator ==", "(: nothing closes this brace"));
}

TEST(StructureCheck, StopsBehindManyMistakes) {
  std::string many;
  for (int i = 0; i < 100'000; ++i) many.append("1 ");
  EXPECT_THAT(complaintsAbout(many), ::testing::SizeIs(20));
  EXPECT_THAT(complaintsAbout(std::string(100'000, '*')), ::testing::SizeIs(20));
  EXPECT_THAT(complaintsAbout(std::string(1'000'000, '(')), ::testing::SizeIs(20));
}

}  // namespace
}  // namespace commandfilter::testing
