#include "expression/Operators.h"

#include <cstddef>

namespace commandfilter {

namespace {

using Operation = ADMEvaluationBinaryOperation;

}  // namespace

constexpr std::array<Operator, 15> detail::kOperators{{
    {ItemType::MakeList, ",", {"", ""}, &Operation::performMakeListOperation},
    {ItemType::Or, "|", {"or", "else"}, &Operation::performOrOperation},
    {ItemType::And, "&", {"and", "then"}, &Operation::performAndOperation},
    {ItemType::Equal, "=", {"eq", ""}, &Operation::performEqualityOperation},
    {ItemType::NotEqual, "!=", {"ne", ""}, &Operation::performUnequalityOperation},
    {ItemType::Less, "", {"lt", ""}, &Operation::performNumberComparisonOperation},
    {ItemType::LessOrEqual, "", {"le", ""}, &Operation::performNumberComparisonOperation},
    {ItemType::Greater, "", {"gt", ""}, &Operation::performNumberComparisonOperation},
    {ItemType::GreaterOrEqual, "", {"ge", ""}, &Operation::performNumberComparisonOperation},
    {ItemType::Concatenate, "+", {"", ""}, &Operation::performConcatOperation},
    {ItemType::ConcatenateIfNotNil, "~", {"", ""}, &Operation::performConcatIfNotNilOperation},
    {ItemType::BitAnd, "", {"bitand", ""}, &Operation::performBitOperation},
    {ItemType::BitOr, "", {"bitor", ""}, &Operation::performBitOperation},
    {ItemType::BitXor, "", {"bitxor", ""}, &Operation::performBitOperation},
    {ItemType::Not, "!", {"not", ""}, nullptr},
}};

namespace {

using detail::kOperators;

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

constexpr std::size_t kWordSlots = 64;

// A word as a number: its letters in lower case, one a byte.
using PackedWord = std::uint64_t;
constexpr std::size_t kLongestWord = sizeof(PackedWord);

constexpr PackedWord packed(std::string_view word) noexcept {
  PackedWord letters = 0;
  for (const char c : word) {
    // Makes capitals small, and a letter of nothing else.
    constexpr unsigned char kSmall = 0x20;
    letters = letters << 8U | (static_cast<unsigned char>(c) | kSmall);
  }
  return letters;
}

// Where the search for a word begins.
constexpr std::size_t slotOf(PackedWord word) noexcept {
  constexpr PackedWord kGoldenRatio = 0x9E3779B97F4A7C15U;
  return word * kGoldenRatio >> 32U & (kWordSlots - 1);
}

struct Word {
  PackedWord letters = 0;
  ItemType type = ItemType::StartOfExpression;
};

constexpr std::array<Word, kWordSlots> wordsBySlot() {
  std::array<Word, kWordSlots> slots{};
  for (const Operator& row : kOperators) {
    for (const std::string_view word : row.words) {
      if (word.empty()) continue;
      std::size_t slot = slotOf(packed(word));
      while (slots[slot].letters != 0) slot = (slot + 1) % kWordSlots;
      slots[slot] = {packed(word), row.type};
    }
  }
  return slots;
}
constexpr std::array<Word, kWordSlots> kWords = wordsBySlot();

constexpr std::array<ItemType, 128> typesBySymbol() {
  std::array<ItemType, 128> types{};
  types.fill(ItemType::StartOfExpression);
  for (const Operator& row : kOperators) {
    if (row.symbol.size() == 1) types[static_cast<unsigned char>(row.symbol.front())] = row.type;
  }
  return types;
}

}  // namespace

constexpr std::array<ItemType, 128> detail::kTypesBySymbol = typesBySymbol();

std::optional<ItemType> typeOfWord(std::string_view word) noexcept {
  if (word.empty() || word.size() > kLongestWord) return std::nullopt;
  const PackedWord letters = packed(word);
  std::size_t slot = slotOf(letters);
  while (kWords[slot].letters != 0 && kWords[slot].letters != letters) {
    slot = (slot + 1) % kWordSlots;
  }
  if (kWords[slot].letters == 0) return std::nullopt;
  return kWords[slot].type;
}

}  // namespace commandfilter
