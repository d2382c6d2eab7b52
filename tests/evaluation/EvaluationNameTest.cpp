#include "evaluation/protocol/EvaluationName.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "runtime/String.h"

namespace commandfilter {
namespace {

EvaluationName symbolOf(std::string_view name) {
  return EvaluationName::ofSymbol(String::fromUTF8(name));
}
EvaluationName procedureOf(std::string_view name) {
  return EvaluationName::ofProcedure(String::fromUTF8(name));
}
std::string selectorOf(const EvaluationName& name) {
  return name.selector() ? name.selector()->name() : "none";
}

// Twice, since a name that was asked for before is remembered; in between one of the same length,
// first and last character, which wants its place.
TEST(EvaluationName, StaysTheSameHoweverOftenItIsAskedFor) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(selectorOf(symbolOf("element")), "element");
    EXPECT_EQ(symbolOf("element").symbol(), EvaluationSymbol::Element);
    EXPECT_EQ(selectorOf(symbolOf("exement")), "exement");
    EXPECT_EQ(symbolOf("exement").symbol(), EvaluationSymbol::None);
    EXPECT_EQ(selectorOf(procedureOf("element")), "executeelementProcedure:");
    EXPECT_EQ(procedureOf("element").symbol(), EvaluationSymbol::None);
    EXPECT_EQ(selectorOf(procedureOf("exement")), "executeexementProcedure:");
    EXPECT_EQ(procedureOf("exement").text(), "exement");
  }
}

TEST(EvaluationName, KnowsWhichArgumentItIs) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(symbolOf("arg105").symbol(), EvaluationSymbol::Argument);
    EXPECT_EQ(symbolOf("arg105").argumentIndex(), 105U);
    EXPECT_EQ(symbolOf("arg115").argumentIndex(), 115U);
    EXPECT_EQ(symbolOf("arg015").symbol(), EvaluationSymbol::NoArgument);
    EXPECT_EQ(symbolOf("arg015").argumentIndex(), 0U);
  }
}

TEST(EvaluationName, MayBeEmptyOrMissing) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(selectorOf(symbolOf("")), "");
    EXPECT_EQ(selectorOf(procedureOf("")), "executeProcedure:");
    EXPECT_EQ(selectorOf(EvaluationName::ofSymbol(nullptr)), "none");
    EXPECT_EQ(selectorOf(EvaluationName::ofProcedure(nullptr)), "none");
  }
}

TEST(EvaluationName, HasNoSelectorWhenItHoldsANUL) {
  using namespace std::string_view_literals;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(selectorOf(symbolOf("arg\0"sv)), "none");
    EXPECT_EQ(symbolOf("arg\0"sv).symbol(), EvaluationSymbol::NoArgument);
    EXPECT_EQ(selectorOf(procedureOf("a\0b"sv)), "none");
    EXPECT_EQ(procedureOf("a\0b"sv).text(), "a\0b"sv);
  }
}

}  // namespace
}  // namespace commandfilter
