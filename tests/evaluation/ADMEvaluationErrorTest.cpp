#include "evaluation/protocol/ADMEvaluationError.h"

#include <gtest/gtest.h>

#include "evaluation/protocol/EvaluationName.h"
#include "expression/Expressions.h"
#include "runtime/Send.h"

namespace commandfilter::testing {
namespace {

TEST(EvaluationError, DescribesItselfWithItsCategory) {
  const Ref<ADMEvaluationError> error = ADMEvaluationError::errorWithCategory_descriptionFormat(
      ErrorCategory::Runtime, "%@ at %d", stringOf("x"), 5);
  EXPECT_EQ(descriptionOf(error), "Error 2: x at 5");
  EXPECT_EQ(error->errorDescription()->text(), "x at 5");
  EXPECT_EQ(error->category(), ErrorCategory::Runtime);
}

TEST(EvaluationError, AnswersMessages) {
  const Value error = ADMEvaluationError::errorWithCategory_descriptionFormat(
      ErrorCategory::Structural, "Incorrect Expression");
  EXPECT_EQ(shown(send(error, Selector("errorCategory"))), "1i");
  EXPECT_EQ(shown(send(error, Selector("errorDescription"))), R"("Incorrect Expression")");
}

TEST(EvaluationError, KeepsAFormatThatItsArgumentsDoNotFit) {
  const Ref<ADMEvaluationError> error = ADMEvaluationError::errorWithCategory_descriptionFormat(
      ErrorCategory::Lexical, "at %d", stringOf("text"));
  EXPECT_EQ(descriptionOf(error), "Error 0: at %d");
}

TEST(EvaluationError, KeepsTheFirstPlaceAndExpression) {
  const Ref<ADMEvaluationError> error =
      ADMEvaluationError::errorWithCategory_descriptionFormat(ErrorCategory::Runtime, "wrong");
  EXPECT_FALSE(error->sourceRange());
  EXPECT_FALSE(error->expression());
  error->noteSourceRange({1, 2});
  error->noteSourceRange({3, 4});
  error->noteExpression(String::create("inner"));
  error->noteExpression(String::create("outer"));
  EXPECT_EQ(error->sourceRange(), (SourceRange{1, 2}));
  EXPECT_EQ(error->expression()->text(), "inner");
}

TEST(EvaluationName, StandsForASelector) {
  const EvaluationName symbol = EvaluationName::ofSymbol(String::create("levelOf:"));
  EXPECT_EQ(symbol.text(), "levelOf:");
  EXPECT_EQ(symbol.selector(), Selector("levelOf:"));
  const EvaluationName procedure = EvaluationName::ofProcedure(String::create("sort"));
  EXPECT_EQ(procedure.text(), "sort");
  EXPECT_EQ(procedure.selector(), Selector("executesortProcedure:"));
}

TEST(EvaluationName, MayHaveNoTextOrNoSelector) {
  EXPECT_FALSE(EvaluationName::ofSymbol(nullptr).selector());
  EXPECT_FALSE(EvaluationName::ofProcedure(nullptr).string());
  EXPECT_EQ(EvaluationName::ofSymbol(nullptr).text(), "");
  const Ref<String> impossible = String::create(std::string("a\0b", 3));
  EXPECT_FALSE(EvaluationName::ofSymbol(impossible).selector());
  EXPECT_FALSE(EvaluationName::ofProcedure(impossible).selector());
  EXPECT_EQ(EvaluationName::ofSymbol(String::create("")).selector(), Selector(""));
}

}  // namespace
}  // namespace commandfilter::testing
