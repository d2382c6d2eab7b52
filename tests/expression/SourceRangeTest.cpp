// Where items and errors come from.
#include "evaluation/protocol/SourceRange.h"

#include <gtest/gtest.h>

#include <ostream>

#include <optional>

#include "expression/ADMEvaluationBinaryOperationBase.h"
#include "expression/ADMEvaluationLexer.h"
#include "expression/ADMEvaluationUnaryOperationBase.h"
#include "expression/CodeUnits.h"
#include "expression/Expressions.h"
#include "expression/TestService.h"

namespace commandfilter::testing {
namespace {

std::string textAt(const String& expression, const SourceRange& range) {
  return CodeUnits(expression.view()).substring(range.begin, range.end);
}

// The texts of the tokens of the tree, operands in brackets behind their operator.
std::string tokensOf(const ADMEvaluationItemBase* item, const String& expression) {
  if (item == nullptr) return "nil";
  std::string text = "'" + textAt(expression, item->sourceRange()) + "'";
  auto* object = const_cast<ADMEvaluationItemBase*>(item);
  if (const auto* binary = castTo<ADMEvaluationBinaryOperationBase>(static_cast<Object*>(object))) {
    text += "[" + tokensOf(binary->leftOperand(), expression) + " " +
            tokensOf(binary->rightOperand(), expression) + "]";
  } else if (const auto* unary =
                 castTo<ADMEvaluationUnaryOperationBase>(static_cast<Object*>(object))) {
    text += "[" + tokensOf(unary->operand(), expression) + "]";
  }
  return text;
}

std::string tokensOf(std::string_view expression) {
  const Ref<ADMEvaluationProcessor> processor = compile(expression);
  return tokensOf(processor->rootItem(), *processor->expressionString());
}

TEST(SourceRanges, CoverTheTokenOfAnItem) {
  EXPECT_EQ(tokensOf("12"), "'12'");
  EXPECT_EQ(tokensOf("  -0x1F\t"), "'-0x1F'");
  EXPECT_EQ(tokensOf(R"( "a b" )"), R"('"a b"')");
  EXPECT_EQ(tokensOf("$Name + [A b]"), "'+'['$Name' '[A b]']");
  EXPECT_EQ(tokensOf("@name:with: \n~ {Name}[Key].a.b "), "'~'['@name:with:' '{Name}[Key].a.b']");
  EXPECT_EQ(tokensOf("not(1 eq 2)"), "'not'['eq'['1' '2']]");
  EXPECT_EQ(tokensOf("! = 1"), "nil");
  EXPECT_EQ(tokensOf("1 ! = 2"), "'! ='['1' '2']");
  EXPECT_EQ(tokensOf("_Name  (1, @x)"), "'_Name'[','['1' '@x']]");
  EXPECT_EQ(tokensOf("1 _Name( )"), "'_Name'['1' '( )']");
}

TEST(SourceRanges, AreEmptyForWhatTheCompilerInserts) {
  const Ref<ADMEvaluationProcessor> processor = compile("(, 1)");
  const Value list = processor->execute();
  const RefPtr<Array> items = castTo<ADMItemsList>(list)->items();
  EXPECT_TRUE(castTo<ADMEvaluationItemBase>((*items)[0])->sourceRange().isEmpty());
  EXPECT_FALSE(castTo<ADMEvaluationItemBase>((*items)[1])->sourceRange().isEmpty());
}

TEST(SourceRanges, CountUnitsOf16Bits) {
  EXPECT_EQ(tokensOf("\"\xF0\x9F\x96\xA8\" + \"\xC3\xA9\" eq @x"),
            "'eq'['+'['\"\xF0\x9F\x96\xA8\"' '\"\xC3\xA9\"'] '@x']");
  const Ref<ADMEvaluationProcessor> processor = compile("\"\xF0\x9F\x96\xA8\" + 1");
  EXPECT_EQ(processor->rootItem()->sourceRange(), (SourceRange{5, 6}));
}

TEST(SourceRanges, AreUnited) {
  EXPECT_EQ((SourceRange{3, 5}.unitedWith({1, 4})), (SourceRange{1, 5}));
  EXPECT_EQ((SourceRange{3, 5}.unitedWith({7, 9})), (SourceRange{3, 9}));
}

struct Place {
  std::string message;
  std::string text;
  std::string expression;
};

// The context's error, the text that it points at, and the expression that this stands in.
Place placeOfError(const ADMEvaluationContext& context) {
  const ADMEvaluationError* error = context.lastError();
  if (error == nullptr) return {};
  Place place{error->errorDescription()->text(), "nowhere", "nowhere"};
  if (!error->expression()) return place;
  place.expression = error->expression()->text();
  if (error->sourceRange()) place.text = textAt(*error->expression(), *error->sourceRange());
  return place;
}

struct FailingExpression {
  std::string_view expression;
  std::string_view message;
  std::string_view text;
};

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest looks for this name.
void PrintTo(const FailingExpression& failing, std::ostream* stream) {
  *stream << failing.expression;
}

class ErrorPlaces : public ::testing::TestWithParam<FailingExpression> {};

TEST_P(ErrorPlaces, AreThoseOfTheItemThatFailed) {
  const Ref<TestContext> context = TestContext::create({}, TestService::create());
  static_cast<void>(evaluate(GetParam().expression, context));
  const Place place = placeOfError(*context);
  EXPECT_EQ(place.message, GetParam().message);
  EXPECT_EQ(place.text, GetParam().text);
  EXPECT_EQ(place.expression, GetParam().expression);
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, ErrorPlaces,
    ::testing::Values(
        FailingExpression{"1 eq (2 lt @nil)", "Incorrect types for comparison operation", "lt"},
        FailingExpression{"(1 bitand \"a\") + 1", "Incorrect types for comparison operation",
                          "bitand"},
        FailingExpression{"(1 + @true) + (2 lt 3)", "Incorrect types for + operation", "+"},
        FailingExpression{"\"a\" + 1 + @true", "Incorrect types for + operation", "+"},
        FailingExpression{"_Sort(1)", "Invalid args in Sort procedure", "_Sort"},
        FailingExpression{"_Array(1, _GetItem(1))", "Incorrect arguments number in GetItem()",
                          "_GetItem"},
        FailingExpression{"1 _Contains()", "Incorrect arguments in Contains()", "_Contains"},
        FailingExpression{"not _Nothing(1)", "Can not find procedure Nothing", "_Nothing"},
        FailingExpression{"(1, 2) _Array 3", "Applying member proc to the list", "_Array"},
        FailingExpression{")", "Evaluating item with type: 51", ")"},
        FailingExpression{"1 + (2", "Incorrect brace balance", "("},
        FailingExpression{"+ )", "Incorrect brace balance", ")"},
        FailingExpression{"1 \"abc", "String parsing error at 7", ""},
        FailingExpression{"1 #", "Incorrect token # at 3", "#"},
        FailingExpression{"1 foo ", "Incorrect operator at 6", " "},
        FailingExpression{"1 eq _GetSize({Bad} + {Bad}.worse)", "no such %path", "{Bad}.worse"}));

// Operations that stand to the left of each other are performed together.
TEST(ErrorPlaces, TellOneOperationFromTheNext) {
  const Ref<TestContext> context = TestContext::create();
  EXPECT_EQ(resultOf(R"("a" + "b" + @true + "c" + "d")", context), R"("cd")");
  ASSERT_NE(context->lastError(), nullptr);
  EXPECT_EQ(context->lastError()->sourceRange()->begin, std::string_view(R"("a" + "b" )").size());
}

TEST(ErrorPlaces, AreUnknownForAnExpressionWithoutATree) {
  const Ref<TestContext> context = TestContext::create();
  static_cast<void>(evaluate("1 2", context));
  EXPECT_EQ(placeOfError(*context).message, "Incorrect Expression");
  EXPECT_EQ(placeOfError(*context).text, "nowhere");
  EXPECT_EQ(placeOfError(*context).expression, "1 2");
}

TEST(ErrorPlaces, AreKnownWhenTheEvaluationIsBrokenOff) {
  constexpr std::string_view kExpression = R"((1 lt "x") + _Sort(_Array(1, "a"), @element))";
  const Ref<TestContext> context = TestContext::create();
  EXPECT_NE(reasonOf([&] { static_cast<void>(evaluate(kExpression, context)); }), "");
  EXPECT_EQ(placeOfError(*context).text, "lt");
  EXPECT_EQ(placeOfError(*context).expression, kExpression);
  // Beside the error of before.
  constexpr std::string_view kNext = R"((2 lt "x") + _Sort(_Array(1, "a"), @element))";
  EXPECT_NE(reasonOf([&] { static_cast<void>(evaluate(kNext, context)); }), "");
  EXPECT_EQ(placeOfError(*context).expression, kNext);
}

TEST(ErrorPlaces, OfAMacroAreInTheMacro) {
  const Ref<TestContext> context = TestContext::create(
      {}, Value(), macrosOf({{"Inner", "1 + (@arg0 lt 1)"}, {"Outer", "_Inner(@arg0) + 1"}}));
  static_cast<void>(evaluate(R"("long enough" ~ _Outer("a"))", context));
  EXPECT_EQ(placeOfError(*context).message, "Incorrect types for comparison operation");
  EXPECT_EQ(placeOfError(*context).text, "lt");
  EXPECT_EQ(placeOfError(*context).expression, "1 + (@arg0 lt 1)");
}

TEST(ErrorPlaces, OfAMacroThatGoesOnAreInTheMacro) {
  const Ref<TestContext> context =
      TestContext::create({}, Value(), macrosOf({{"Inner", R"((1 lt "a") or 5)"}}));
  EXPECT_EQ(resultOf("_Inner() then @nil", context), "nil");
  EXPECT_EQ(placeOfError(*context).text, "lt");
  EXPECT_EQ(placeOfError(*context).expression, R"((1 lt "a") or 5)");
}

TEST(ErrorPlaces, OfAMacrosArgumentsAreInTheCaller) {
  const Ref<TestContext> context =
      TestContext::create({}, Value(), macrosOf({{"Twice", "@arg0 + @arg0"}}));
  EXPECT_EQ(resultOf(R"(_Twice(1 lt "a"))", context), "nil");
  EXPECT_EQ(placeOfError(*context).text, "lt");
  EXPECT_EQ(placeOfError(*context).expression, R"(_Twice(1 lt "a"))");
}

TEST(ErrorPlaces, OfAMacroThatDoesNotCompileAreInTheMacro) {
  const Ref<TestContext> context =
      TestContext::create({}, Value(), macrosOf({{"Broken", "1 + (2"}}));
  for (int call = 0; call < 2; ++call) {
    context->clearErrors();
    EXPECT_EQ(resultOf("_Broken()", context), "nil");
    EXPECT_EQ(placeOfError(*context).message, "Incorrect brace balance");
    EXPECT_EQ(placeOfError(*context).text, "(");
    EXPECT_EQ(placeOfError(*context).expression, "1 + (2");
  }
}

TEST(ErrorPlaces, AreNotThoseOfALaterExpression) {
  const Ref<TestContext> context = TestContext::create();
  context->setRuntimeError("from elsewhere");
  EXPECT_EQ(resultOf("@nil", context), "nil");
  EXPECT_EQ(placeOfError(*context).message, "from elsewhere");
  EXPECT_EQ(placeOfError(*context).expression, "nowhere");
}

TEST(ErrorPlaces, StayThoseOfTheFirstExpression) {
  const Ref<TestContext> context = TestContext::create();
  EXPECT_EQ(resultOf(R"((1 lt "a") or 2)", context), "2q");
  EXPECT_EQ(resultOf("@nil", context), "nil");
  EXPECT_EQ(placeOfError(*context).text, "lt");
  EXPECT_EQ(placeOfError(*context).expression, R"((1 lt "a") or 2)");
}

}  // namespace
}  // namespace commandfilter::testing
