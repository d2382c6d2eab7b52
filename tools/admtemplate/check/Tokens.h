// The tokens of an expression, also of one that does not compile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "evaluation/protocol/SourceRange.h"
#include "expression/ItemType.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter::tools {

/// A token. What the lexer cannot read is a token too, of the type StartOfExpression.
struct Token {
  ItemType type;
  /// True for a procedure behind its first argument.
  bool isMember = false;
  SourceRange range;
  /// What stands behind the sign of a constant, value, name or procedure; nil for other tokens.
  RefPtr<String> name;

  [[nodiscard]] bool isUnreadable() const noexcept { return type == ItemType::StartOfExpression; }
};

/// What the lexer cannot read.
struct Unreadable {
  enum class Kind : std::uint8_t {
    /// A character that begins nothing.
    Character,
    /// A word that is no operator.
    Word,
    /// A minus sign, or "0x", without digits behind it.
    Number,
    /// A text, or a path, that nothing closes.
    Text,
    Path,
    /// The character NUL, which ends an expression.
    Nul,
  };
  Kind kind;
  SourceRange range;
};

/// All tokens of an expression.
struct Tokens {
  /// How many unreadable places are looked for in one expression.
  static constexpr std::size_t kMostUnreadable = 20;

  std::vector<Token> tokens;
  std::vector<Unreadable> unreadable;
  /// True when the end is missing, or braces are part of what cannot be read.
  bool areBracesUnknown = false;
};

/// Reads the whole expression, on behind what cannot be read.
[[nodiscard]] Tokens tokensOf(const Ref<String>& expression);

}  // namespace commandfilter::tools
