#include "expression/TokenReader.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "expression/LexicalClasses.h"
#include "expression/Operators.h"
#include "expression/TokenStart.h"

namespace commandfilter {

inline char16_t TokenReader::nextChar() noexcept {
  if (position_ < units_.length()) return units_[position_++];
  if (position_ == units_.length()) ++position_;
  return 0;
}

inline void TokenReader::putCharBack() noexcept {
  if (position_ >= 1 && position_ <= units_.length()) --position_;
}

inline void TokenReader::skipWhitespaces() noexcept {
  if (position_ < units_.length() && isBlankUnit(units_[position_])) {
    position_ = units_.skipWhile(position_ + 1, isBlankUnit);
  }
}

void TokenReader::applyTerminator(char16_t unit) noexcept {
  if (!isBlankUnit(unit)) putCharBack();
}

template <typename Belongs>
inline std::size_t TokenReader::readWhile(Belongs belongs) noexcept {
  const std::size_t end = units_.skipWhile(position_, belongs);
  // The end of the expression is read as well, and a blank. What comes cannot be foretold, so it is
  // counted rather than branched on.
  const bool takesTerminator = end == units_.length() || isBlankUnit(units_[end]);
  position_ = end + static_cast<std::size_t>(takesTerminator);
  return end;
}

inline std::size_t TokenReader::readTo(char16_t closing) noexcept {
  const std::size_t end = units_.findOrNull(closing, position_);
  position_ = end + 1;
  return end;
}

inline bool TokenReader::endsWith(std::size_t end, char16_t closing) const noexcept {
  return end < units_.length() && units_[end] == closing;
}

bool TokenReader::fail(LexicalFailure failure, char16_t unit) noexcept {
  failure_ = failure;
  failedUnit_ = unit;
  return false;
}

bool TokenReader::next(Token& token) {
  failure_ = LexicalFailure::None;
  skipWhitespaces();
  token.range.begin = position_;
  if (!readToken(token)) return false;
  previousType_ = token.type;
  return true;
}

inline bool TokenReader::readOne(Token& token, ItemType type) noexcept {
  token.type = type;
  token.range.end = position_;
  return true;
}

template <typename Belongs>
inline bool TokenReader::readName(Token& token, ItemType type, Belongs belongs) noexcept {
  token.type = type;
  token.content.begin = position_;
  token.content.end = readWhile(belongs);
  token.range.end = token.content.end;
  return true;
}

inline bool TokenReader::readToken(Token& token) {
  const char16_t unit = nextChar();
  switch (tokenStartOf(unit)) {
    case TokenStart::EndOfExpression:
      return false;
    case TokenStart::Word:
      return readOperator(token);
    case TokenStart::Number:
      return readNumber(token, unit);
    case TokenStart::NotOrUnequal:
      return readNotOrUnequal(token);
    case TokenStart::String:
      return readString(token);
    case TokenStart::GlobalConstant:
      return readName(token, ItemType::GlobalConstant, isNameUnit);
    case TokenStart::OpeningBrace:
      return readOne(token, ItemType::OpeningBrace);
    case TokenStart::ClosingBrace:
      return readOne(token, ItemType::ClosingBrace);
    case TokenStart::Selector:
      return readName(token, ItemType::Selector,
                      [](char16_t c) { return c == u':' || isNameUnit(c); });
    case TokenStart::GlobalValue:
      return readGlobalName(token);
    case TokenStart::Procedure:
      token.isMemberCall = isOperand(previousType_) || previousType_ == ItemType::ClosingBrace;
      return readName(token, ItemType::ProcedureCall, isNameUnit);
    case TokenStart::FeaturePath:
      return readIdentifiersPath(token);
    case TokenStart::Symbol:
      return readOne(token, typeOfSymbol(unit));
    case TokenStart::Incorrect:
      break;
  }
  return fail(LexicalFailure::Token, unit);
}

bool TokenReader::readNotOrUnequal(Token& token) noexcept {
  const std::size_t end = position_;
  skipWhitespaces();
  if (nextChar() == u'=') return readOne(token, ItemType::NotEqual);
  putCharBack();
  token.type = ItemType::Not;
  token.range.end = end;
  return true;
}

bool TokenReader::readNumber(Token& token, char16_t unit) noexcept {
  std::size_t start = token.range.begin;
  if (unit == u'-') {
    ++start;
    unit = nextChar();
  }
  bool isHexadecimal = false;
  if (unit == u'0') {
    unit = nextChar();
    if (unit == u'x') {
      unit = nextChar();
      isHexadecimal = true;
      start += 2;
    }
  }
  while (isHexadecimal ? isHexDigitUnit(unit) : isDigitUnit(unit)) unit = nextChar();
  const std::size_t end = position_ - 1;
  if (end == start) return fail(LexicalFailure::Token, unit);
  applyTerminator(unit);
  token.type = ItemType::Number;
  token.content = {start, end};
  token.range.end = end;
  return true;
}

bool TokenReader::readString(Token& token) noexcept {
  token.type = ItemType::String;
  token.content.begin = position_;
  token.content.end = readTo(u'"');
  token.range.end = position_;
  return endsWith(token.content.end, u'"') || fail(LexicalFailure::String);
}

bool TokenReader::readGlobalName(Token& token) noexcept {
  token.type = ItemType::GlobalValue;
  token.content.begin = position_;
  token.content.end = readTo(u']');
  token.range.end = std::min(position_, units_.length());
  return true;
}

bool TokenReader::readIdentifiersPath(Token& token) noexcept {
  token.type = ItemType::FeaturePath;
  token.content.begin = position_;
  token.content.end = readTo(u'}');
  if (!endsWith(token.content.end, u'}')) return fail(LexicalFailure::FeaturePath);
  token.range.end = position_;
  char16_t unit = nextChar();
  if (unit == u'[') {
    const std::size_t keyEnd = readTo(u']');
    if (!endsWith(keyEnd, u']')) return fail(LexicalFailure::FeaturePath);
    token.range.end = position_;
    unit = nextChar();
  }
  if (unit == u'.') {
    token.range.end = readWhile([](char16_t c) { return c == u'.' || isNameUnit(c); });
  } else {
    applyTerminator(unit);
  }
  return true;
}

bool TokenReader::readOperator(Token& token) {
  const std::size_t begin = token.range.begin;
  const std::size_t end = readWhile(isLetterUnit);
  if (end < units_.length() && units_[end] == 0) {
    // The end of the input makes the rest of the expression the word, and no word has that unit.
    position_ = end + 1;
    return fail(LexicalFailure::Operator);
  }
  const std::optional<std::string_view> word = units_.view(begin, end);
  const std::optional<ItemType> type =
      typeOfWord(word ? *word : std::string_view(units_.substring(begin, end)));
  if (!type) return fail(LexicalFailure::Operator);
  token.type = *type;
  token.range.end = end;
  return true;
}

}  // namespace commandfilter
