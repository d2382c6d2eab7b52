#include "expression/CodeUnits.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace commandfilter {
namespace {

// What the search gives, found by looking at one unit after the other.
std::size_t foundOneByOne(const CodeUnits& units, char16_t unit, std::size_t start) {
  while (start < units.length() && units[start] != unit && units[start] != 0) ++start;
  return start;
}

void expectSameEverywhere(const std::string& text, char16_t unit) {
  const CodeUnits units(text);
  for (std::size_t start = 0; start <= units.length(); ++start) {
    EXPECT_EQ(units.findOrNull(unit, start), foundOneByOne(units, unit, start))
        << text << " from " << start;
  }
}

TEST(CodeUnits, FindsAUnitAtEveryDistance) {
  for (std::size_t before = 0; before < 40; ++before) {
    for (const std::size_t behind : {0U, 1U, 7U, 30U}) {
      expectSameEverywhere(std::string(before, 'a') + '"' + std::string(behind, 'b'), u'"');
      expectSameEverywhere(std::string(before, 'a') + '\0' + std::string(behind, '"'), u'"');
    }
  }
}

TEST(CodeUnits, TakesNoOtherCharacterForTheUnit) {
  std::string all;
  for (char c = 1; c != 127; ++c) {
    all.push_back(c);
    all.append("!");
  }
  for (const char16_t unit : {u'"', u'}', u']', char16_t{1}, char16_t{126}}) {
    expectSameEverywhere(all, unit);
  }
}

TEST(CodeUnits, FindsNothingInATextWithoutTheUnit) {
  for (std::size_t size = 0; size < 40; ++size) {
    const std::string text(size, 'a');
    EXPECT_EQ(CodeUnits(text).findOrNull(u'"', 0), size);
    EXPECT_EQ(CodeUnits(text).findOrNull(u'"', size + 2), size);
  }
}

TEST(CodeUnits, FindsAUnitInOtherTextsThanASCII) {
  expectSameEverywhere("\u00E4\u20AC\U0001F600 and so on \"quoted\"", u'"');
  expectSameEverywhere("a\u20ACb", u'\u20AC');
  expectSameEverywhere("abcdefghijk", u'\u20AC');
}

}  // namespace
}  // namespace commandfilter
