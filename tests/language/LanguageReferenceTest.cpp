// docs/language.md says what the code does: its tables list what the code's tables list. Its
// examples are run by LanguageCasesTest.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ProcedureSignatures.h"
#include "expression/ItemType.h"
#include "expression/LexicalClasses.h"
#include "expression/Operators.h"
#include "language/CaseFile.h"
#include "language/MarkdownTables.h"
#include "runtime/Class.h"

namespace commandfilter::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAreArray;
using ::testing::IsSupersetOf;
using ::testing::UnorderedElementsAreArray;

std::string reference() {
  std::ifstream stream(LANGUAGE_REFERENCE, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// The tables whose first column has that name.
std::vector<MarkdownTable> tablesWith(std::string_view firstColumn) {
  std::vector<MarkdownTable> tables = tablesOf(reference());
  std::erase_if(tables, [firstColumn](const MarkdownTable& table) {
    return table.header.empty() || table.header.front() != firstColumn;
  });
  return tables;
}

// All ways to write an operator.
std::vector<std::string> spellingsOf(const Operator& row) {
  std::vector<std::string> spellings;
  for (const std::string_view spelling : {row.symbol, row.words[0], row.words[1]}) {
    if (!spelling.empty()) spellings.emplace_back(spelling);
  }
  return spellings;
}

std::vector<std::string> proceduresOf(const MethodGroup& group) {
  constexpr std::string_view kBefore = "execute";
  constexpr std::string_view kBehind = "Procedure:";
  std::vector<std::string> names;
  for (const Method& method : group.methods) {
    const std::string_view selector = method.selector;
    names.push_back("_" + std::string(selector.substr(
                              kBefore.size(), selector.size() - kBefore.size() - kBehind.size())));
  }
  return names;
}

// True when some example has the text as a word or symbol of its own.
bool isInAnExample(const std::string& text) {
  static const std::vector<Case> examples = casesOfMarkdown(LANGUAGE_REFERENCE);
  const auto isNameCharacter = [](char c) { return isNameUnit(static_cast<unsigned char>(c)); };
  const bool isName = isNameCharacter(text.back());
  return std::ranges::any_of(examples, [&](const Case& example) {
    const std::string expression = example.expression();
    for (std::size_t at = expression.find(text); at != std::string::npos;
         at = expression.find(text, at + 1)) {
      const std::size_t end = at + text.size();
      const bool startsThere = at == 0 || !isNameCharacter(expression[at - 1]);
      const bool endsThere = end == expression.size() || !isNameCharacter(expression[end]);
      if (!isName || (startsThere && endsThere)) return true;
    }
    return false;
  });
}

TEST(LanguageReference, HasNoBrokenTables) {
  for (const MarkdownTable& table : tablesOf(reference())) {
    for (const MarkdownRow& row : table.rows) {
      EXPECT_EQ(row.cells.size(), table.header.size()) << "line " << row.line;
    }
  }
}

TEST(LanguageReference, ListsTheOperatorsInTheirOrder) {
  const std::vector<MarkdownTable> tables = tablesWith("level");
  ASSERT_EQ(tables.size(), 1U);
  using Row = std::vector<std::string>;
  std::vector<Row> listed;
  for (const MarkdownRow& row : tables.front().rows) {
    Row line{row.cells[0]};
    std::ranges::move(codeIn(row.cells[1]), std::back_inserter(line));
    std::ranges::move(codeIn(row.cells[2]), std::back_inserter(line));
    listed.push_back(std::move(line));
  }
  std::vector<Row> expected;
  for (const Operator& row : operators()) {
    Row line{std::to_string(codeOf(row.type))};
    std::ranges::move(spellingsOf(row), std::back_inserter(line));
    expected.push_back(std::move(line));
  }
  expected.push_back({std::to_string(codeOf(ItemType::ProcedureCall)), "_"});
  EXPECT_THAT(listed, ElementsAreArray(expected));
}

TEST(LanguageReference, ListsTheProceduresOfEveryGroupInATable) {
  std::vector<std::set<std::string>> listed;
  for (const MarkdownTable& table : tablesWith("procedure")) {
    std::set<std::string> names;
    for (const MarkdownRow& row : table.rows) {
      const std::vector<std::string> codes = codeIn(row.cells.front());
      ASSERT_EQ(codes.size(), 1U) << "line " << row.line;
      const std::string name = codes.front().substr(0, codes.front().find('('));
      EXPECT_TRUE(names.insert(name).second) << name << " stands there twice";
    }
    listed.push_back(std::move(names));
  }
  std::vector<std::set<std::string>> expected;
  for (const MethodGroup* group : ADMEvaluationContextBase::kClass.groups) {
    const std::vector<std::string> names = proceduresOf(*group);
    expected.emplace_back(names.begin(), names.end());
  }
  EXPECT_THAT(listed, UnorderedElementsAreArray(expected));
}

// As the reference writes it.
std::string countText(const ProcedureSignature& signature) {
  if (signature.name == "CallMethod") return "2 and one for each colon";
  if (signature.name == "EndLine") return "any number, which are not evaluated";
  const ArgumentCount& count = signature.count;
  if (count.inPairs) return "an even number";
  const std::string least = std::to_string(count.least);
  if (count.most == ArgumentCount::kAnyNumber) {
    return count.least == 0 ? "any number" : least + " or more";
  }
  return count.least == count.most ? least : least + " or " + std::to_string(count.most);
}

TEST(LanguageReference, SaysHowManyArgumentsEveryProcedureTakes) {
  std::size_t procedures = 0;
  for (const MarkdownTable& table : tablesWith("procedure")) {
    for (const MarkdownRow& row : table.rows) {
      const std::string form = codeIn(row.cells.front()).front();
      const ProcedureSignature* signature = procedureSignature(form.substr(1, form.find('(') - 1));
      ASSERT_NE(signature, nullptr) << form;
      EXPECT_EQ(row.cells[1], countText(*signature)) << form;
      ++procedures;
    }
  }
  EXPECT_EQ(procedures, kProcedureSignatures.size());
}

TEST(LanguageReference, NamesEveryOperatorInTheGrammarAndNoOtherWord) {
  std::string grammar = blocksOf(reference(), "ebnf");
  constexpr std::string_view kQuote = "'\"'";
  for (std::size_t at = grammar.find(kQuote); at != std::string::npos; at = grammar.find(kQuote)) {
    grammar.erase(at, kQuote.size());
  }
  std::set<std::string> terminals;
  for (std::size_t at = grammar.find('"'); at != std::string::npos;) {
    const std::size_t end = grammar.find('"', at + 1);
    ASSERT_NE(end, std::string::npos);
    terminals.insert(grammar.substr(at + 1, end - at - 1));
    at = grammar.find('"', end + 1);
  }
  std::set<std::string> spellings;
  for (const Operator& row : operators()) {
    for (const std::string& spelling : spellingsOf(row)) spellings.insert(spelling);
  }
  EXPECT_THAT(terminals, IsSupersetOf(spellings));
  for (const std::string& terminal : terminals) {
    if (isLetterUnit(static_cast<unsigned char>(terminal.front()))) {
      EXPECT_THAT(spellings, Contains(terminal));
    }
  }
}

TEST(LanguageReference, HasAnExampleOfEveryOperatorAndProcedure) {
  for (const Operator& row : operators()) {
    for (const std::string& spelling : spellingsOf(row)) {
      EXPECT_TRUE(isInAnExample(spelling)) << spelling;
    }
  }
  for (const MethodGroup* group : ADMEvaluationContextBase::kClass.groups) {
    for (const std::string& name : proceduresOf(*group)) EXPECT_TRUE(isInAnExample(name)) << name;
  }
}

}  // namespace
}  // namespace commandfilter::testing
