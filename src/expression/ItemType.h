// The codes of items, which are also the precedences of operators.
#pragma once

#include <cstdint>

namespace commandfilter {

/// What an item is. Below 10 an operand; from 10 an operator, whose code is its precedence: a
/// higher code binds tighter, equal codes associate to the left.
enum class ItemType : std::int32_t {
  String = 0,
  Number = 1,
  GlobalConstant = 2,
  GlobalValue = 3,
  Selector = 4,
  FeaturePath = 5,
  EmptyArguments = 6,
  MakeList = 21,
  Or = 22,
  And = 23,
  Equal = 24,
  NotEqual = 25,
  Less = 26,
  LessOrEqual = 27,
  Greater = 28,
  GreaterOrEqual = 29,
  Concatenate = 30,
  ConcatenateIfNotNil = 31,
  BitAnd = 32,
  BitOr = 33,
  BitXor = 34,
  Not = 35,
  ProcedureCall = 36,
  OpeningBrace = 50,
  ClosingBrace = 51,
  StartOfExpression = 52,
};

/// The number that stands for the type in messages.
[[nodiscard]] constexpr std::int32_t codeOf(ItemType type) noexcept {
  return static_cast<std::int32_t>(type);
}
[[nodiscard]] constexpr bool isOperand(ItemType type) noexcept {
  constexpr std::int32_t kFirstOperator = 10;
  return codeOf(type) < kFirstOperator;
}

}  // namespace commandfilter
