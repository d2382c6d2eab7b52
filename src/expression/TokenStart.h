// What a token begins with.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "expression/LexicalClasses.h"

namespace commandfilter {

/// The kinds of tokens, as their first unit tells them.
enum class TokenStart : std::uint8_t {
  Incorrect,
  EndOfExpression,
  /// None: a blank in front of the token.
  Blank,
  Word,
  Number,
  NotOrUnequal,
  String,
  GlobalConstant,
  OpeningBrace,
  ClosingBrace,
  Selector,
  GlobalValue,
  Procedure,
  FeaturePath,
  Symbol,
  /// A letter, or incorrect: a unit that has no place in the table.
  Unclassified,
};

namespace detail {

constexpr std::array<TokenStart, kClassified> tokenStarts() {
  std::array<TokenStart, kClassified> starts{};
  for (std::size_t c = 0; c < starts.size(); ++c) {
    const auto unit = static_cast<char16_t>(c);
    if (isOfClass(unit, kBlankClass)) starts[c] = TokenStart::Blank;
    if (isOfClass(unit, kLetterClass)) starts[c] = TokenStart::Word;
    if (isOfClass(unit, kDigitClass)) starts[c] = TokenStart::Number;
  }
  starts[0] = TokenStart::EndOfExpression;
  starts['-'] = TokenStart::Number;
  starts['!'] = TokenStart::NotOrUnequal;
  starts['"'] = TokenStart::String;
  starts['$'] = TokenStart::GlobalConstant;
  starts['('] = TokenStart::OpeningBrace;
  starts[')'] = TokenStart::ClosingBrace;
  starts['@'] = TokenStart::Selector;
  starts['['] = TokenStart::GlobalValue;
  starts['_'] = TokenStart::Procedure;
  starts['{'] = TokenStart::FeaturePath;
  for (const char c : {'&', '+', ',', '=', '|', '~'}) {
    starts[static_cast<unsigned char>(c)] = TokenStart::Symbol;
  }
  return starts;
}
inline constexpr std::array<TokenStart, kClassified> kTokenStarts = tokenStarts();

}  // namespace detail

[[nodiscard]] constexpr TokenStart tokenStartOf(char16_t unit) noexcept {
  return unit < detail::kClassified ? detail::kTokenStarts[unit] : TokenStart::Unclassified;
}

}  // namespace commandfilter
