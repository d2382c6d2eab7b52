// The cases of this folder, each a test of its own that is named after file and line.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>

#include "language/CaseFile.h"
#include "language/CaseRunner.h"

namespace commandfilter::testing {

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest looks for this name.
void PrintTo(const Case& tested, std::ostream* stream) {
  *stream << tested.file << ':' << tested.line;
}

namespace {

class LanguageCase : public ::testing::TestWithParam<Case> {};

TEST_P(LanguageCase, Holds) {
  const Case& tested = GetParam();
  for (const std::string& difference : differencesOf(tested)) {
    ADD_FAILURE_AT(tested.path.c_str(), static_cast<int>(tested.line))
        << titleOf(tested) << "\n  " << difference;
  }
}

std::string nameOf(const ::testing::TestParamInfo<Case>& info) {
  std::string name = info.param.file + "_" + std::to_string(info.param.line);
  std::ranges::replace_if(
      name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Language, LanguageCase, ::testing::ValuesIn(casesOfFolder(LANGUAGE_CASES)),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Reference, LanguageCase,
                         ::testing::ValuesIn(casesOfMarkdown(LANGUAGE_REFERENCE)), nameOf);

}  // namespace
}  // namespace commandfilter::testing
