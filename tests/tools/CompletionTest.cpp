#include "repl/Completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "NoDevice.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/String.h"

namespace commandfilter::tools {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CompletionTest : public ::testing::Test {
 protected:
  static Ref<Dictionary> keys(std::initializer_list<const char*> names) {
    DictionaryBuilder builder;
    for (const char* name : names) builder.set(name, String::create("1"));
    return builder.build();
  }
  static Setting makeSetting() {
    DictionaryBuilder configuration;
    configuration.set("TemplateValues", keys({"Names", "Levels", "Low level"}));
    configuration.set("TemplateConstants", keys({"Limit", "Last"}));
    configuration.set("TemplateMacroses", keys({"GetAll"}));
    return {std::nullopt, {configuration.build(), keys({"Start"}), NoDevice::create()}};
  }
  [[nodiscard]] Completion completed(std::string_view text) const {
    return complete(text, Vocabulary(setting_, ""));
  }
  [[nodiscard]] std::vector<std::string> words(std::string_view text) const {
    return completed(text).words;
  }

  Setting setting_ = makeSetting();
};

TEST_F(CompletionTest, OffersConstantsBehindADollar) {
  EXPECT_THAT(words("1 + $"), ElementsAre("Last", "Limit"));
  EXPECT_THAT(words("$Li"), ElementsAre("Limit"));
  EXPECT_EQ(completed("1 + $Li").begin, 5U);
  EXPECT_THAT(words("$x"), IsEmpty());
}

TEST_F(CompletionTest, OffersValuesInBrackets) {
  EXPECT_THAT(words("["), ElementsAre("Levels", "Low level", "Names"));
  EXPECT_THAT(words("[Names] + [Low l"), ElementsAre("Low level"));
  EXPECT_EQ(completed("[Na").closing, "]");
  EXPECT_THAT(words("[Names]"), IsEmpty());
}

TEST_F(CompletionTest, OffersProceduresAndMacrosBehindAnUnderscore) {
  EXPECT_THAT(words("_Get"), ElementsAre("_GetAll", "_GetItem", "_GetKey", "_GetSize"));
  EXPECT_THAT(words("x _Contai"), ElementsAre("_Contains"));
  EXPECT_EQ(completed("_Contai").closing, "(");
}

TEST_F(CompletionTest, OffersEveryProcedureOfContexts) {
  for (const char* name : {"_Aggregate", "_CallMethod", "_External", "_Filter", "_InputValue",
                           "_Service", "_Sort", "_TemplateValue", "_Translate"}) {
    EXPECT_THAT(words("_"), Contains(name));
  }
}

TEST_F(CompletionTest, OffersNamesBehindAnAtSign) {
  EXPECT_THAT(words("@"),
              ElementsAre("element", "false", "index", "initial", "nil", "service", "true"));
  EXPECT_THAT(words("1 eq @n"), ElementsAre("nil"));
}

TEST_F(CompletionTest, OffersKeysInTheQuotesOfACall) {
  EXPECT_THAT(words("_InputValue(\""), ElementsAre("Start"));
  EXPECT_THAT(words("_TemplateValue( \"N"), ElementsAre("Names"));
  EXPECT_EQ(completed("_InputValue(\"S").closing, "\"");
  EXPECT_THAT(words("_InputValue(\"Start\") + $La"), ElementsAre("Last"));
}

TEST_F(CompletionTest, OffersNothingInsideOtherTexts) {
  EXPECT_THAT(words("\"a $L"), IsEmpty());
  EXPECT_THAT(words("\"a\" + \"[L"), IsEmpty());
}

TEST_F(CompletionTest, OffersCommandsAtTheBeginningOnly) {
  EXPECT_THAT(words(":tr"), ElementsAre(":trace", ":tree"));
  EXPECT_THAT(words("1 :tr"), IsEmpty());
}

TEST_F(CompletionTest, OffersWhatACommandTakes) {
  EXPECT_THAT(words(":value Lo"), ElementsAre("Low level"));
  EXPECT_EQ(completed(":trace 1 + $La").begin, 12U);
  EXPECT_THAT(words(":trace 1 + $La"), ElementsAre("Last"));
  EXPECT_THAT(words(":keys $La"), IsEmpty());
}

TEST_F(CompletionTest, TakesAnyText) {
  for (const char* text : {"", " ", ".", "}.", "{}.", "{x}[", "{x}[y].", "]", "[", "\"", "\xFF_",
                           ":", ": ", "@:", "{\"", "}[x", "::::"}) {
    EXPECT_LE(completed(text).begin, std::string_view(text).size()) << text;
  }
}

TEST(CommonBeginning, IsTheLongestOfAll) {
  EXPECT_EQ(commonBeginning({}), "");
  EXPECT_EQ(commonBeginning({"abc"}), "abc");
  EXPECT_EQ(commonBeginning({"abc", "abd", "ab"}), "ab");
  EXPECT_EQ(commonBeginning({"abc", "x"}), "");
}

}  // namespace
}  // namespace commandfilter::tools
