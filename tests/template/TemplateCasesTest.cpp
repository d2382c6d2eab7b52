// The cases of this folder: each template is a test of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string>

#include "template/TemplateCaseFile.h"
#include "template/TemplateCaseRunner.h"

namespace commandfilter::testing {

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest looks for this name.
void PrintTo(const TemplateCase& tested, std::ostream* stream) {
  *stream << tested.file << ':' << tested.line << ' ' << tested.name;
}

namespace {

class TemplateCases : public ::testing::TestWithParam<TemplateCase> {};

TEST_P(TemplateCases, Hold) {
  const TemplateCase& tested = GetParam();
  for (const TemplateDifference& difference : differencesOf(tested)) {
    ADD_FAILURE_AT(tested.path.c_str(), static_cast<int>(difference.line))
        << "template " << tested.name << "\n  " << difference.what;
  }
}

std::string nameOf(const ::testing::TestParamInfo<TemplateCase>& info) {
  std::string name = info.param.file + "_" + std::to_string(info.param.line);
  std::ranges::replace_if(
      name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Files, TemplateCases,
                         ::testing::ValuesIn(templateCasesOfFolder(TEMPLATE_CASES)), nameOf);

INSTANTIATE_TEST_SUITE_P(Reference, TemplateCases,
                         ::testing::ValuesIn(templateCasesOfMarkdown(TEMPLATE_REFERENCE)), nameOf);

// The reader says what is wrong with a file instead of leaving cases out.
TEST(TemplateCaseFile, SaysWhatCannotBeRead) {
  for (const char* text : {"Key => 1\n", "template t\n    colour = red\n", "template t\nKey => \n",
                           "template t\nKey => 1 2\n", "template t\nKey => 1\n    colour red\n",
                           "    value A = 1\n", "template t\n    value A\n        nothing\n"}) {
    const std::vector<TemplateCase> cases = templateCasesOfText("file.cases", text);
    ASSERT_EQ(cases.size(), 1U) << text;
    EXPECT_NE(cases.front().problem, "") << text;
    EXPECT_EQ(differencesOf(cases.front()).size(), 1U) << text;
  }
}

TEST(TemplateCaseFile, NoticesWhatIsNotAsTheCaseSays) {
  for (const char* text :
       {"template t\n    value A = 1\nA => 2\n", "template t\n    value A = 5 lt \"x\"\nA => nil\n",
        "template t\n    value A = 1\nA => 1, Error 2: no\n",
        "template t\n    value A = 1\nA => raises \"no\"\n",
        "template t\n    value A = 1\nA => 1\n    calls @deviceState\n",
        "template t\n    value A = 5 lt \"x\"\nA => nil\n    Error 2: Incorrect types for "
        "comparison operation\n    where 5\n",
        "template t\n    value A = 1\nall => nil\n", "template t\nerrors => {}\n"}) {
    const std::vector<TemplateCase> cases = templateCasesOfText("file.cases", text);
    ASSERT_EQ(cases.size(), 1U) << text;
    EXPECT_EQ(cases.front().problem, "") << text;
    EXPECT_EQ(differencesOf(cases.front()).size(), 1U) << text;
  }
}

}  // namespace
}  // namespace commandfilter::testing
