#include "expression/Operators.h"

#include <algorithm>
#include <cstddef>

namespace commandfilter {

namespace {

using Operation = ADMEvaluationBinaryOperation;

constexpr std::array<Operator, 15> kOperators{{
    {ItemType::MakeList, ",", {}, &Operation::performMakeListOperation},
    {ItemType::Or, "|", {"or", "else"}, &Operation::performOrOperation},
    {ItemType::And, "&", {"and", "then"}, &Operation::performAndOperation},
    {ItemType::Equal, "=", {"eq"}, &Operation::performEqualityOperation},
    {ItemType::NotEqual, "!=", {"ne"}, &Operation::performUnequalityOperation},
    {ItemType::Less, "", {"lt"}, &Operation::performNumberComparisonOperation},
    {ItemType::LessOrEqual, "", {"le"}, &Operation::performNumberComparisonOperation},
    {ItemType::Greater, "", {"gt"}, &Operation::performNumberComparisonOperation},
    {ItemType::GreaterOrEqual, "", {"ge"}, &Operation::performNumberComparisonOperation},
    {ItemType::Concatenate, "+", {}, &Operation::performConcatOperation},
    {ItemType::ConcatenateIfNotNil, "~", {}, &Operation::performConcatIfNotNilOperation},
    {ItemType::BitAnd, "", {"bitand"}, &Operation::performBitOperation},
    {ItemType::BitOr, "", {"bitor"}, &Operation::performBitOperation},
    {ItemType::BitXor, "", {"bitxor"}, &Operation::performBitOperation},
    {ItemType::Not, "!", {"not"}, nullptr},
}};

constexpr std::int32_t kFirst = codeOf(ItemType::MakeList);

// A row's place follows from its code, which the lookup by code relies on.
constexpr bool rowsStandInOrder() {
  for (std::size_t i = 0; i < kOperators.size(); ++i) {
    if (codeOf(kOperators[i].type) != kFirst + static_cast<std::int32_t>(i)) return false;
  }
  return true;
}
static_assert(rowsStandInOrder());
static_assert(codeOf(kOperators.back().type) + 1 == codeOf(ItemType::ProcedureCall));

}  // namespace

std::span<const Operator> operators() noexcept { return kOperators; }

const Operator* operatorOfType(ItemType type) noexcept {
  const std::int32_t place = codeOf(type) - kFirst;
  if (place < 0 || place >= static_cast<std::int32_t>(kOperators.size())) return nullptr;
  return &kOperators[static_cast<std::size_t>(place)];
}

const Operator* operatorOfWord(std::string_view word) noexcept {
  if (word.empty()) return nullptr;
  const auto found = std::ranges::find_if(kOperators, [word](const Operator& row) {
    return row.words[0] == word || row.words[1] == word;
  });
  return found != kOperators.end() ? &*found : nullptr;
}

const Operator* operatorOfSymbol(std::string_view symbol) noexcept {
  if (symbol.empty()) return nullptr;
  const auto found = std::ranges::find(kOperators, symbol, &Operator::symbol);
  return found != kOperators.end() ? &*found : nullptr;
}

}  // namespace commandfilter
