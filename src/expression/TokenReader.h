// Finds the tokens of an expression.
#pragma once

#include <cstddef>
#include <cstdint>

#include "expression/CodeUnits.h"
#include "expression/ItemType.h"
#include "expression/Token.h"
#include "runtime/Export.h"
#include "runtime/String.h"

namespace commandfilter {

/// What the reader could not go on with.
enum class LexicalFailure : std::uint8_t {
  None,
  Token,
  String,
  Operator,
  /// A feature path without an end, which is no error of its own.
  FeaturePath,
};

/// Reads the tokens of one expression from start to end, and makes nothing of them.
class COMMANDFILTER_EXPORT TokenReader {
 public:
  /// The expression must outlive the reader.
  explicit TokenReader(const String& expression) : units_(expression.view()) {}

  /// Reads the next token. False at the end of the expression and after a failure.
  [[nodiscard]] bool next(Token& token);

  /// How many code units have been read, one more once the end has been read.
  [[nodiscard]] std::size_t position() const noexcept { return position_; }
  /// The type of the token that was read last.
  [[nodiscard]] ItemType previousType() const noexcept { return previousType_; }
  /// Why there was no token; None at the end of the expression.
  [[nodiscard]] LexicalFailure failure() const noexcept { return failure_; }
  /// The unit that was read last, where it is what the failure is about.
  [[nodiscard]] char16_t failedUnit() const noexcept { return failedUnit_; }
  [[nodiscard]] const CodeUnits& units() const noexcept { return units_; }

 private:
  // The readers start behind the character that selected them. The end of the expression reads as
  // the unit 0.
  char16_t nextChar() noexcept;
  void putCharBack() noexcept;
  void skipWhitespaces() noexcept;
  /// A blank that ended a token stays read; any other unit is read again.
  void applyTerminator(char16_t unit) noexcept;
  /// Reads units that belong to a name, and the unit behind them. Gives where the name ends.
  template <typename Belongs>
  std::size_t readWhile(Belongs belongs) noexcept;
  /// Reads up to the closing unit and that unit, or to the end. Gives where the text in between
  /// ends.
  std::size_t readTo(char16_t closing) noexcept;
  /// True when the closing unit stands there.
  [[nodiscard]] bool endsWith(std::size_t end, char16_t closing) const noexcept;

  bool accept(Token& token, ItemType type, std::size_t end) noexcept;
  // Each apart from `next`, which saves no registers then for tokens of one character.
  template <typename Belongs>
  [[gnu::noinline]] bool readName(Token& token, ItemType type, Belongs belongs) noexcept;
  [[gnu::noinline]] bool readUnclassified(Token& token, char16_t unit);
  [[gnu::noinline]] bool readNotOrUnequal(Token& token) noexcept;
  [[gnu::noinline]] bool readNumber(Token& token, char16_t unit) noexcept;
  [[gnu::noinline]] bool readOperator(Token& token);
  [[gnu::noinline]] bool readGlobalName(Token& token) noexcept;
  [[gnu::noinline]] bool readString(Token& token) noexcept;
  [[gnu::noinline]] bool readIdentifiersPath(Token& token) noexcept;
  bool fail(LexicalFailure failure, char16_t unit = 0) noexcept;

  CodeUnits units_;
  std::size_t position_ = 0;
  ItemType previousType_ = ItemType::StartOfExpression;
  char16_t failedUnit_ = 0;
  LexicalFailure failure_ = LexicalFailure::None;
};

}  // namespace commandfilter
