// The operators of the language: code, spellings and what evaluates them, in one table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "expression/ADMEvaluationBinaryOperation.h"
#include "expression/ItemType.h"

namespace commandfilter {

/// A row of the table.
struct Operator {
  /// The code, which is the precedence.
  ItemType type;
  /// The symbol, empty when there is none.
  std::string_view symbol;
  /// The words, empty where there are fewer; written in any case.
  std::array<std::string_view, 2> words;
  /// The operation; nullptr for the operator with one operand, which is an item of its own.
  ADMEvaluationBinaryOperation::Operation perform;
};

namespace detail {

// In the order of the codes, none of which is left out.
COMMANDFILTER_EXPORT extern const std::array<Operator, 15> kOperators;
// For each character, the code of the operator that is written so.
COMMANDFILTER_EXPORT extern const std::array<ItemType, 128> kTypesBySymbol;

}  // namespace detail

/// All operators but the procedure call, lowest precedence first.
[[nodiscard]] inline std::span<const Operator> operators() noexcept { return detail::kOperators; }

/// The row of a code; nullptr when the code is no operator's.
[[nodiscard]] inline const Operator* operatorOfType(ItemType type) noexcept {
  // Any number may be given as a code, so the difference needs more bits.
  const std::int64_t distance = std::int64_t{codeOf(type)} - codeOf(ItemType::MakeList);
  const auto place = static_cast<std::size_t>(distance);
  return place < detail::kOperators.size() ? &detail::kOperators[place] : nullptr;
}

/// The code of the operator that has the word, in any case; none when there is none. Only ASCII
/// letters have cases here, which no other letter is one of.
[[nodiscard]] COMMANDFILTER_EXPORT std::optional<ItemType> typeOfWord(
    std::string_view word) noexcept;

/// The code of the operator that has the character, one of ASCII, as its symbol; StartOfExpression
/// when there is none.
[[nodiscard]] inline ItemType typeOfSymbol(char16_t symbol) noexcept {
  return detail::kTypesBySymbol[symbol];
}

}  // namespace commandfilter
