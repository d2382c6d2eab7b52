#include "expression/ADMEvaluationLexer.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "expression/ADMEvaluationBinaryOperation.h"
#include "expression/ADMEvaluationFeaturePath.h"
#include "expression/ADMEvaluationGlobalConstant.h"
#include "expression/ADMEvaluationGlobalValue.h"
#include "expression/ADMEvaluationNonExecutable.h"
#include "expression/ADMEvaluationNumber.h"
#include "expression/ADMEvaluationOperatorProcedure.h"
#include "expression/ADMEvaluationProcedure.h"
#include "expression/ADMEvaluationSelector.h"
#include "expression/ADMEvaluationString.h"
#include "expression/ADMEvaluationUnaryOperation.h"
#include "expression/LexicalClasses.h"
#include "expression/Operators.h"
#include "expression/TokenStart.h"
#include "runtime/Text.h"

namespace commandfilter {

namespace {

Ref<ADMEvaluationItemBase> itemOfOperator(const Operator& row) {
  if (row.perform == nullptr) return ADMEvaluationUnaryOperation::itemWithOperationType(row.type);
  return ADMEvaluationBinaryOperation::itemWithOperationType(row.type);
}

}  // namespace

constinit const Class ADMEvaluationLexer::kClass{.name = "ADMEvaluationLexer",
                                                 .base = &Object::kClass};

ADMEvaluationLexer::ADMEvaluationLexer(Ref<String> expression, Ref<ADMEvaluationContext> context)
    : expressionString_(std::move(expression)),
      units_(expressionString_->view()),
      context_(std::move(context)) {}

Ref<ADMEvaluationLexer> ADMEvaluationLexer::initWithExpressionString_evaluationContext(
    Ref<String> expression, Ref<ADMEvaluationContext> context) {
  return make<ADMEvaluationLexer>(std::move(expression), std::move(context));
}

template <typename... Arguments>
std::nullptr_t ADMEvaluationLexer::fail(std::string_view format, const Arguments&... arguments) {
  Ref<ADMEvaluationError> error = ADMEvaluationError::errorWithCategory_descriptionFormat(
      ErrorCategory::Lexical, format, arguments...);
  // The last unit read; behind the text when that was its end.
  error->noteSourceRange({currentPosition_ - 1, currentPosition_});
  context_->setLastError(std::move(error));
  return nullptr;
}

char16_t ADMEvaluationLexer::nextChar() noexcept {
  if (currentPosition_ < units_.length()) return units_[currentPosition_++];
  if (currentPosition_ == units_.length()) ++currentPosition_;
  return 0;
}

void ADMEvaluationLexer::putCharBack() noexcept {
  if (currentPosition_ >= 1 && currentPosition_ <= units_.length()) --currentPosition_;
}

inline void ADMEvaluationLexer::skipWhitespaces() noexcept {
  if (currentPosition_ < units_.length()) {
    currentPosition_ = units_.skipWhile(currentPosition_, isBlankUnit);
  }
}

void ADMEvaluationLexer::applyTerminator(char16_t unit) noexcept {
  if (!isBlankUnit(unit)) putCharBack();
}

template <typename Belongs>
std::size_t ADMEvaluationLexer::readWhile(Belongs belongs) noexcept {
  const std::size_t end = units_.skipWhile(currentPosition_, belongs);
  // The end of the expression is read as well, and a blank. What comes cannot be foretold, so it is
  // counted rather than branched on.
  const bool takesTerminator = end == units_.length() || isBlankUnit(units_[end]);
  currentPosition_ = end + static_cast<std::size_t>(takesTerminator);
  tokenEnd_ = end;
  return end;
}

std::size_t ADMEvaluationLexer::readTo(char16_t closing) noexcept {
  const std::size_t end = units_.findOrNull(closing, currentPosition_);
  currentPosition_ = end + 1;
  return end;
}

bool ADMEvaluationLexer::endsWith(std::size_t end, char16_t closing) const noexcept {
  return end < units_.length() && units_[end] == closing;
}

Ref<String> ADMEvaluationLexer::stringBetween(std::size_t begin, std::size_t end) const {
  if (const std::optional<std::string_view> text = units_.view(begin, end)) {
    return make<String>(*text);
  }
  return make<String>(units_.substring(begin, end));
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationLexer::readItem() {
  const char16_t unit = nextChar();
  switch (tokenStartOf(unit)) {
    case TokenStart::EndOfExpression:
      return nullptr;
    case TokenStart::Word:
      putCharBack();
      return readOperator();
    case TokenStart::Number:
      putCharBack();
      return readNumber();
    case TokenStart::NotOrUnequal:
      return readNotOrUnequal();
    case TokenStart::String: {
      RefPtr<String> text = readString();
      if (!text) return nullptr;
      return ADMEvaluationString::itemWithString(std::move(text));
    }
    case TokenStart::GlobalConstant:
      return ADMEvaluationGlobalConstant::itemWithName(readStandardIdentifier());
    case TokenStart::OpeningBrace:
      return ADMEvaluationNonExecutable::itemWithItemType(ItemType::OpeningBrace);
    case TokenStart::ClosingBrace:
      return ADMEvaluationNonExecutable::itemWithItemType(ItemType::ClosingBrace);
    case TokenStart::Selector:
      return ADMEvaluationSelector::itemWithSelectorName(readSelector());
    case TokenStart::GlobalValue:
      return ADMEvaluationGlobalValue::itemWithName(readGlobalName());
    case TokenStart::Procedure:
      return readProcedure();
    case TokenStart::FeaturePath: {
      RefPtr<Array> path = readIdentifiersPath();
      if (!path) return nullptr;
      return ADMEvaluationFeaturePath::itemWithFeaturePathComponents(Ref<Array>(*path));
    }
    case TokenStart::Symbol: {
      const char symbol = static_cast<char>(unit);
      return itemOfOperator(*operatorOfSymbol({&symbol, 1}));
    }
    case TokenStart::Incorrect:
      break;
  }
  return fail("Incorrect token %c at %d", static_cast<std::uint16_t>(unit), currentPosition_);
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationLexer::nextItem() {
  skipWhitespaces();
  const std::size_t begin = currentPosition_;
  tokenEnd_ = 0;
  RefPtr<ADMEvaluationItemBase> item = readItem();
  if (item) {
    const std::size_t end = tokenEnd_ != 0 ? tokenEnd_ : currentPosition_;
    item->setSourceRange({begin, std::min(end, units_.length())});
    previousType_ = item->type();
  }
  return item;
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationLexer::readNotOrUnequal() {
  const std::size_t end = currentPosition_;
  skipWhitespaces();
  if (nextChar() == u'=') return itemOfOperator(*operatorOfSymbol("!="));
  putCharBack();
  tokenEnd_ = end;
  return itemOfOperator(*operatorOfSymbol("!"));
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationLexer::readProcedure() {
  Ref<String> name = readStandardIdentifier();
  if (isOperand(previousType_) || previousType_ == ItemType::ClosingBrace) {
    return ADMEvaluationOperatorProcedure::itemWithProcedureName(std::move(name));
  }
  return ADMEvaluationProcedure::itemWithProcedureName(std::move(name));
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationLexer::readNumber() {
  std::size_t start = currentPosition_;
  char16_t unit = nextChar();
  const bool negative = unit == u'-';
  if (negative) {
    ++start;
    unit = nextChar();
  }
  int base = 10;
  if (unit == u'0') {
    unit = nextChar();
    if (unit == u'x') {
      unit = nextChar();
      base = 16;
      start += 2;
    }
  }
  while (base == 16 ? isHexDigitUnit(unit) : isDigitUnit(unit)) unit = nextChar();
  const std::size_t end = currentPosition_ - 1;
  if (end == start) {
    return fail("Incorrect token %c at %d", static_cast<std::uint16_t>(unit), currentPosition_);
  }
  applyTerminator(unit);
  tokenEnd_ = end;
  return ADMEvaluationNumber::itemWithNumber(numberBetween(start, end, base, negative));
}

Number ADMEvaluationLexer::numberBetween(std::size_t begin, std::size_t end, int base,
                                         bool negative) const {
  constexpr std::int64_t kLimit = std::numeric_limits<std::int64_t>::max();
  std::int64_t value = 0;
  for (std::size_t i = begin; i < end; ++i) {
    const char16_t unit = units_[i];
    const int digit = isDigitUnit(unit) ? unit - u'0' : (unit | 0x20) - u'a' + 10;
    // A literal that is too large stops at the limit, and takes its sign from there.
    if (value > (kLimit - digit) / base) {
      value = kLimit;
      break;
    }
    value = value * base + digit;
  }
  return Number::integer(negative ? -value : value);
}

RefPtr<String> ADMEvaluationLexer::readString() {
  const std::size_t begin = currentPosition_;
  const std::size_t end = readTo(u'"');
  if (!endsWith(end, u'"')) return fail("String parsing error at %d", currentPosition_);
  return stringBetween(begin, end);
}

Ref<String> ADMEvaluationLexer::readGlobalName() {
  const std::size_t begin = currentPosition_;
  return stringBetween(begin, readTo(u']'));
}

Ref<String> ADMEvaluationLexer::readStandardIdentifier() {
  const std::size_t begin = currentPosition_;
  return stringBetween(begin, readWhile(isNameUnit));
}

Ref<String> ADMEvaluationLexer::readSelector() {
  const std::size_t begin = currentPosition_;
  return stringBetween(begin,
                       readWhile([](char16_t unit) { return unit == u':' || isNameUnit(unit); }));
}

Ref<String> ADMEvaluationLexer::trimmedBetween(std::size_t begin, std::size_t end) const {
  const auto isNeverTrimmed = [this](std::size_t at) {
    return units_[at] > u' ' && units_[at] < 128;
  };
  if (begin < end && isNeverTrimmed(begin) && isNeverTrimmed(end - 1)) {
    return stringBetween(begin, end);
  }
  return String::create(std::string(trimmed(units_.substring(begin, end))));
}

RefPtr<Array> ADMEvaluationLexer::readIdentifiersPath() {
  PathPlaces places;
  places.nameBegin = currentPosition_;
  places.nameEnd = readTo(u'}');
  if (!endsWith(places.nameEnd, u'}')) return nullptr;
  std::size_t end = places.nameEnd + 1;
  char16_t unit = nextChar();
  if (unit == u'[') {
    places.hasKey = true;
    places.keyBegin = currentPosition_;
    places.keyEnd = readTo(u']');
    if (!endsWith(places.keyEnd, u']')) return nullptr;
    end = places.keyEnd + 1;
    unit = nextChar();
  }
  if (unit == u'.') {
    places.partsBegin = currentPosition_;
    places.partsEnd = readWhile([](char16_t c) { return c == u'.' || isNameUnit(c); });
    end = places.partsEnd;
  } else {
    applyTerminator(unit);
  }
  tokenEnd_ = end;
  const std::optional<std::string_view> text = units_.view(places.nameBegin, end);
  if (!text) return pathAt(places);
  return recentPaths_.pathFor(*text, [&] { return pathAt(places); });
}

Ref<Array> ADMEvaluationLexer::pathAt(const PathPlaces& places) const {
  std::vector<Value> components;
  constexpr std::size_t kUsual = 3;
  components.reserve(kUsual);
  components.emplace_back(trimmedBetween(places.nameBegin, places.nameEnd));
  for (std::size_t begin = places.partsBegin; places.partsBegin != places.partsEnd;) {
    const std::size_t end = std::min(
        units_.skipWhile(begin, [](char16_t unit) { return unit != u'.'; }), places.partsEnd);
    components.emplace_back(stringBetween(begin, end));
    if (end == places.partsEnd) break;
    begin = end + 1;
  }
  if (places.hasKey) components.emplace_back(trimmedBetween(places.keyBegin, places.keyEnd));
  return Array::create(std::move(components));
}

RefPtr<ADMEvaluationItemBase> ADMEvaluationLexer::readOperator() {
  const std::size_t begin = currentPosition_;
  const std::size_t end = readWhile(isLetterUnit);
  if (end < units_.length() && units_[end] == 0) {
    // The end of the input makes the rest of the expression the word, and no word has that unit.
    currentPosition_ = end + 1;
    return fail("Incorrect operator at %d", currentPosition_);
  }
  const std::optional<std::string_view> word = units_.view(begin, end);
  if (const Operator* row = operatorOfWord(word ? *word : units_.substring(begin, end))) {
    return itemOfOperator(*row);
  }
  return fail("Incorrect operator at %d", currentPosition_);
}

}  // namespace commandfilter
