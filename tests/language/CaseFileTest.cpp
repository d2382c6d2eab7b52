// The form of case files: what is read, and what is refused with its line.
#include "language/CaseFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "language/CaseNotation.h"
#include "language/CaseRunner.h"
#include "language/CaseText.h"
#include "language/MarkdownTables.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<Case> casesOf(std::string_view text) {
  return casesOfText("some.cases", text, LANGUAGE_CASES);
}

// The only problem of a text, with its line.
std::string problemOf(std::string_view text) {
  std::string problems;
  for (const Case& found : casesOf(text)) {
    if (found.problem.empty()) continue;
    problems.append(problems.empty() ? "" : "; ");
    problems.append(std::to_string(found.line)).append(": ").append(found.problem);
  }
  return problems;
}

std::vector<std::string> differencesIn(std::string_view text) {
  const std::vector<Case> cases = casesOf(text);
  EXPECT_EQ(cases.size(), 1U);
  return differencesOf(cases.front());
}

TEST(CaseFile, ReadsACaseOfOneLine) {
  const std::vector<Case> cases = casesOf("# a comment\n\n1 + 2   => \"12\"\n");
  ASSERT_EQ(cases.size(), 1U);
  EXPECT_EQ(cases[0].line, 3U);
  EXPECT_EQ(cases[0].expression(), "1 + 2");
  EXPECT_EQ(cases[0].value.print(), "\"12\"");
  EXPECT_EQ(cases[0].error, std::nullopt);
  EXPECT_EQ(titleOf(cases[0]), "some.cases:3: 1 + 2");
}

TEST(CaseFile, ReadsTheDetailsOfACase) {
  const std::vector<Case> cases = casesOf(
      "a\n    => nil\n    Error 2: x\n    tree (a)\n    calls b, c\n    where d\n"
      "    tokens e\n    parent `Error 1: \\u{41}`\n");
  ASSERT_EQ(cases.size(), 1U);
  EXPECT_EQ(cases[0].error, "Error 2: x");
  EXPECT_EQ(cases[0].tree, "(a)");
  EXPECT_EQ(cases[0].calls, "b, c");
  EXPECT_EQ(cases[0].where, "d");
  EXPECT_EQ(cases[0].tokens, "e");
  EXPECT_EQ(cases[0].parentError, "Error 1: A");
}

TEST(CaseFile, ReplacesEscapesBetweenBackquotesOnly) {
  EXPECT_EQ(casesOf(R"(`a\t\3{b\n}\`\u{e9}` => 1)").front().expression(), "a\tb\nb\nb\n`é");
  EXPECT_EQ(casesOf(R"("a\t" => 1)").front().expression(), R"("a\t")");
  EXPECT_EQ(casesOf("`` => 1").front().expression(), "");
}

TEST(CaseFile, AnArrowInsideATextIsNone) {
  EXPECT_EQ(casesOf("\"=> a\" => 1").front().expression(), "\"=> a\"");
}

TEST(CaseFile, RefusesWhatItCannotReadWithItsLine) {
  EXPECT_EQ(problemOf("1 + 2\n"), "1: no expected value");
  EXPECT_EQ(problemOf("\n1 =>\n"), "2: no value");
  EXPECT_EQ(problemOf("1 => 5 6\n"), "1: more than a value: 6");
  EXPECT_EQ(problemOf("1 => five\n"), "1: no value: five");
  EXPECT_EQ(problemOf("1 => 5, wrong\n"), "1: no error: wrong");
  EXPECT_EQ(problemOf("1 => 300C\n"), "1: no number of its encoding: 300");
  EXPECT_EQ(problemOf("1 => \"a\n"), "1: a text is not closed with \"");
  EXPECT_EQ(problemOf("1 => [1 2]\n"), "1: no ,: 2]");
  EXPECT_EQ(problemOf("1 => {1}\n"), "1: no :: }");
  EXPECT_EQ(problemOf("1 => \"\\q\"\n"), "1: an unknown escape: \\q");
  EXPECT_EQ(problemOf("1 => \"\\u{x}\"\n"), "1: no number in an escape: x");
  EXPECT_EQ(problemOf("`1 => 2\n"), "1: a text is not closed with `");
  EXPECT_EQ(problemOf("`1` 2 => 2\n"), "1: no => behind the expression");
  EXPECT_EQ(problemOf("1 => 2\n    => 3\n"), "2: a second value");
  EXPECT_EQ(problemOf("1 => 2\n    tre (1)\n"), "2: nothing that a case can have: tre");
  EXPECT_EQ(problemOf("    tree (1)\n"), "1: an indented line that belongs to nothing");
  EXPECT_EQ(problemOf("in nowhere\n"), "1: no context nowhere");
  EXPECT_EQ(problemOf("context a round\n"), "1: no kind of context: round");
  EXPECT_EQ(problemOf("context a single\ncontext a single\n"), "2: a second context a");
  EXPECT_EQ(problemOf("context a single\n    device d\n"), "2: no device d");
  EXPECT_EQ(problemOf("context a single\n    named Tray = d\n"), "2: no device d");
  EXPECT_EQ(problemOf("context a single\n    parent p\n"), "2: no context p");
  EXPECT_EQ(problemOf("context a single\n    colour red\n"), "2: no part of a context: colour");
  EXPECT_EQ(problemOf("context a array\n    at x\n"), "2: no number: x");
  EXPECT_EQ(problemOf("device d\ndevice d\n"), "2: a second device d");
  EXPECT_EQ(problemOf("device d\n    name\n"), "2: neither name nor value: name");
  EXPECT_EQ(problemOf("device d\n    {A}x = 5\n"), "2: no feature path");
  EXPECT_EQ(problemOf("import missing.setup\n"), "1: cannot read missing.setup");
}

TEST(CaseFile, GoesOnBehindWhatItCannotRead) {
  const std::vector<Case> cases = casesOf("1 => what\n    tree (1)\n2 => 2\n");
  ASSERT_EQ(cases.size(), 2U);
  EXPECT_FALSE(cases[0].problem.empty());
  EXPECT_THAT(differencesOf(cases[0]), ElementsAre("cannot be read: no value: what"));
  EXPECT_THAT(differencesOf(cases[1]), IsEmpty());
}

TEST(CaseFile, AMissingFileIsACaseWithAProblem) {
  const std::vector<Case> cases = casesOfFile("/nowhere/missing.cases");
  ASSERT_EQ(cases.size(), 1U);
  EXPECT_EQ(cases[0].problem, "cannot read /nowhere/missing.cases");
}

TEST(CaseRunner, FindsNothingInACaseThatHolds) {
  EXPECT_THAT(differencesIn("1 + 2 => \"12\""), IsEmpty());
  EXPECT_THAT(differencesIn("1 lt @nil => nil, Error 2: Incorrect types for comparison operation"),
              IsEmpty());
}

TEST(CaseRunner, TellsValuesApart) {
  // Once for each of the two evaluations.
  EXPECT_THAT(differencesIn("1 => 2"),
              ElementsAre("value expected 2\n      got 1q",
                          "evaluated again: value expected 2\n      got 1q"));
  for (const std::string_view wrong :
       {"1 => YES", "1 => 1i", "1 => \"1\"", "1 => nil", "@nil => null", "@nil => NO",
        "@false => 0", "\"a\" => \"b\"", "_Array(1, 2) => [2, 1]", "_Array(1) => [1, 1]",
        "_Array(1, \"a\") => [1]", "_Dictionary(1, \"a\", 2, \"b\") => {\"b\": 2, \"a\": 1}",
        "_Dictionary(1, \"a\") => {}", "1, 2 => items(1)", "1, 2 => [1, 2]", "@service => <x>",
        "1 => raises \"x\""}) {
    EXPECT_EQ(differencesIn(wrong).size(), 2U) << wrong;
  }
}

TEST(CaseRunner, TellsEverythingElseApart) {
  EXPECT_THAT(differencesIn("1 lt @nil => nil").front(),
              HasSubstr("error expected none\n      got Error 2: Incorrect types"));
  EXPECT_THAT(differencesIn("1 => 1, Error 2: x").front(),
              HasSubstr("error expected Error 2: x\n      got none"));
  EXPECT_THAT(differencesIn("1 => 1\n    tree 2"), ElementsAre("tree expected 2\n      got 1"));
  EXPECT_THAT(differencesIn("1 => 1\n    tokens 1 2"),
              ElementsAre("tokens expected 1 2\n      got 1 1"));
  EXPECT_THAT(differencesIn("_Probe(\"a\", 1) => 1\n    calls b").front(),
              "calls expected b\n      got a");
  EXPECT_THAT(differencesIn("1 => 1\n    where 1").front(),
              "place of the error expected 1\n      got unknown");
}

TEST(CaseNotation, PrintsWhatItReads) {
  for (const std::string_view text : {"nil",
                                      "null",
                                      "YES",
                                      "NO",
                                      "5",
                                      "-5i",
                                      "7Q",
                                      "2.5",
                                      "0.5f",
                                      "\"a\\n\\\"\"",
                                      "[]",
                                      "[1, [null]]",
                                      "{}",
                                      "{\"a\": 1, 2: \"b\"}",
                                      "date(5)",
                                      "data(00ff)",
                                      "<name>",
                                      "items(1, $A)",
                                      "raises \"x\"",
                                      "fails \"x\""}) {
    EXPECT_EQ(Notation::readWhole(text).print(), text);
  }
}

TEST(CaseNotation, PrintsValuesAsTheyAreWritten) {
  for (const std::string_view text : {"nil", "null", "YES", "5q", "5c", "-5i", "7Q", "2.5d", "0.5f",
                                      "\"a\\n\\\"\\u{1}\"", "[1q, [null]]", "{\"a\": 1q}"}) {
    EXPECT_EQ(notationOf(Notation::readWhole(text).value()), text);
  }
}

TEST(CaseText, ShortensTheMiddle) {
  EXPECT_EQ(shortened("short"), "short");
  EXPECT_THAT(shortened(std::string(10'000, 'x')), HasSubstr("x ... 9740 bytes ... x"));
}

TEST(MarkdownTables, ReadsCellsWithBars) {
  const std::vector<MarkdownTable> tables = tablesOf(
      "text\n| a | b |\n|---|--:|\n| `\\|` | x, `y` and `z` |\n\n```\n| c |\n|---|\n```\n");
  ASSERT_EQ(tables.size(), 1U);
  EXPECT_THAT(tables[0].header, ElementsAre("a", "b"));
  ASSERT_EQ(tables[0].rows.size(), 1U);
  EXPECT_EQ(tables[0].rows[0].line, 4U);
  EXPECT_THAT(tables[0].rows[0].cells, ElementsAre("`|`", "x, `y` and `z`"));
  EXPECT_THAT(codeIn(tables[0].rows[0].cells[1]), ElementsAre("y", "z"));
}

TEST(MarkdownTables, KeepsTheLinesOfExamples) {
  EXPECT_EQ(examplesOf("| example | value |\n|---|---|\n| `1` | `2` |\n```examples\n3 => 4\n```\n"),
            "\n\n1 => 2\n\n3 => 4\n\n");
  EXPECT_EQ(examplesOf("| example | value |\n|---|---|\n| 1 | `2` |\n"),
            "\n\nan example without its value\n");
}

}  // namespace
}  // namespace commandfilter::testing
