#include "expression/TokenReader.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "expression/LexicalClasses.h"
#include "expression/Operators.h"
#include "expression/TokenStart.h"

namespace commandfilter {

namespace {

// The character classes as objects: a loop over the units takes these in, and would call functions.
constexpr auto kIsBlank = [](char16_t unit) { return isBlankUnit(unit); };
constexpr auto kIsLetter = [](char16_t unit) { return isLetterUnit(unit); };
constexpr auto kIsOfName = [](char16_t unit) { return isNameUnit(unit); };
constexpr auto kIsOfSelector = [](char16_t unit) { return unit == u':' || isNameUnit(unit); };
constexpr auto kIsOfPath = [](char16_t unit) { return unit == u'.' || isNameUnit(unit); };

}  // namespace

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
    position_ = units_.skipWhile(position_ + 1, kIsBlank);
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

inline bool TokenReader::accept(Token& token, ItemType type, std::size_t end) noexcept {
  token.type = type;
  token.range.end = end;
  previousType_ = type;
  return true;
}

template <typename Belongs>
bool TokenReader::readName(Token& token, ItemType type, Belongs belongs) noexcept {
  token.content.begin = position_;
  token.content.end = readWhile(belongs);
  return accept(token, type, token.content.end);
}

bool TokenReader::next(Token& token) {
  failure_ = LexicalFailure::None;
  char16_t unit = 0;
  TokenStart start = TokenStart::Blank;
  do {
    token.range.begin = position_;
    unit = nextChar();
    start = tokenStartOf(unit);
  } while (start == TokenStart::Blank);
  switch (start) {
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
      return readName(token, ItemType::GlobalConstant, kIsOfName);
    case TokenStart::OpeningBrace:
      return accept(token, ItemType::OpeningBrace, position_);
    case TokenStart::ClosingBrace:
      return accept(token, ItemType::ClosingBrace, position_);
    case TokenStart::Selector:
      return readName(token, ItemType::Selector, kIsOfSelector);
    case TokenStart::GlobalValue:
      return readGlobalName(token);
    case TokenStart::Procedure:
      token.isMemberCall = isOperand(previousType_) || previousType_ == ItemType::ClosingBrace;
      return readName(token, ItemType::ProcedureCall, kIsOfName);
    case TokenStart::FeaturePath:
      return readIdentifiersPath(token);
    case TokenStart::Symbol:
      return accept(token, typeOfSymbol(unit), position_);
    case TokenStart::Unclassified:
      return readUnclassified(token, unit);
    case TokenStart::Blank:
    case TokenStart::Incorrect:
      break;
  }
  return fail(LexicalFailure::Token, unit);
}

bool TokenReader::readUnclassified(Token& token, char16_t unit) {
  return isLetterUnit(unit) ? readOperator(token) : fail(LexicalFailure::Token, unit);
}

bool TokenReader::readNotOrUnequal(Token& token) noexcept {
  const std::size_t end = position_;
  skipWhitespaces();
  if (nextChar() == u'=') return accept(token, ItemType::NotEqual, position_);
  putCharBack();
  return accept(token, ItemType::Not, end);
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
  token.content = {start, end};
  return accept(token, ItemType::Number, end);
}

bool TokenReader::readString(Token& token) noexcept {
  token.content.begin = position_;
  token.content.end = readTo(u'"');
  if (!endsWith(token.content.end, u'"')) return fail(LexicalFailure::String);
  return accept(token, ItemType::String, position_);
}

bool TokenReader::readGlobalName(Token& token) noexcept {
  token.content.begin = position_;
  token.content.end = readTo(u']');
  return accept(token, ItemType::GlobalValue, std::min(position_, units_.length()));
}

bool TokenReader::readIdentifiersPath(Token& token) noexcept {
  token.content.begin = position_;
  token.content.end = readTo(u'}');
  if (!endsWith(token.content.end, u'}')) return fail(LexicalFailure::FeaturePath);
  std::size_t end = position_;
  char16_t unit = nextChar();
  if (unit == u'[') {
    const std::size_t keyEnd = readTo(u']');
    if (!endsWith(keyEnd, u']')) return fail(LexicalFailure::FeaturePath);
    end = position_;
    unit = nextChar();
  }
  if (unit == u'.') {
    end = readWhile(kIsOfPath);
  } else {
    applyTerminator(unit);
  }
  return accept(token, ItemType::FeaturePath, end);
}

bool TokenReader::readOperator(Token& token) {
  const std::size_t begin = token.range.begin;
  const std::size_t end = readWhile(kIsLetter);
  if (end < units_.length() && units_[end] == 0) {
    // The end of the input makes the rest of the expression the word, and no word has that unit.
    position_ = end + 1;
    return fail(LexicalFailure::Operator);
  }
  const std::optional<std::string_view> word = units_.view(begin, end);
  const std::optional<ItemType> type =
      typeOfWord(word ? *word : std::string_view(units_.substring(begin, end)));
  if (!type) return fail(LexicalFailure::Operator);
  return accept(token, *type, end);
}

}  // namespace commandfilter
