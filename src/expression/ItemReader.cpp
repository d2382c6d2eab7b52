#include "expression/ItemReader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

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
#include "expression/SharedPath.h"
#include "runtime/Number.h"
#include "runtime/Text.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

Number numberOf(const Token& token, const CodeUnits& units) {
  constexpr std::int64_t kLimit = std::numeric_limits<std::int64_t>::max();
  const bool isNegative = units[token.range.begin] == u'-';
  const std::size_t first = token.range.begin + (isNegative ? 1 : 0);
  // "0x" does not belong to the digits.
  const int base = token.content.begin > first ? 16 : 10;
  std::int64_t value = 0;
  for (std::size_t i = token.content.begin; i < token.content.end; ++i) {
    const char16_t unit = units[i];
    const int digit = isDigitUnit(unit) ? unit - u'0' : (unit | 0x20) - u'a' + 10;
    // A literal that is too large stops at the limit, and takes its sign from there.
    if (value > (kLimit - digit) / base) {
      value = kLimit;
      break;
    }
    value = value * base + digit;
  }
  return Number::integer(isNegative ? -value : value);
}

// The item of the token, which knows its place.
template <typename Item>
Ref<ADMEvaluationItemBase> placed(Ref<Item> item, const Token& token) {
  item->setSourceRange(token.range);
  return item;
}

}  // namespace

RefPtr<ADMEvaluationError> ItemReader::newError() const {
  const std::size_t position = reader_.position();
  const auto errorAt = [position](std::string_view format, const auto&... arguments) {
    Ref<ADMEvaluationError> error = ADMEvaluationError::errorWithCategory_descriptionFormat(
        ErrorCategory::Lexical, format, arguments..., position);
    // The last unit read; behind the text when that was its end.
    error->noteSourceRange({position - 1, position});
    return error;
  };
  switch (reader_.failure()) {
    case LexicalFailure::Token:
      return errorAt("Incorrect token %c at %d", static_cast<std::uint16_t>(reader_.failedUnit()));
    case LexicalFailure::String:
      return errorAt("String parsing error at %d");
    case LexicalFailure::Operator:
      return errorAt("Incorrect operator at %d");
    case LexicalFailure::FeaturePath:
    case LexicalFailure::None:
      break;
  }
  return nullptr;
}

inline Ref<String> ItemReader::textOf(const SourceRange& range) const {
  const std::optional<std::string_view> text = reader_.units().view(range.begin, range.end);
  return text ? make<String>(*text) : convertedText(range);
}

Ref<String> ItemReader::convertedText(const SourceRange& range) const {
  return make<String>(reader_.units().substring(range.begin, range.end));
}

template <auto kMake>
Ref<ADMEvaluationItemBase> ItemReader::namedItemOf(const Token& token) const {
  return placed(kMake(textOf(token.content)), token);
}

template <auto kMake>
Ref<ADMEvaluationItemBase> ItemReader::typedItemOf(const Token& token) {
  return placed(kMake(token.type), token);
}

Ref<ADMEvaluationItemBase> ItemReader::numberItemOf(const Token& token) const {
  return placed(ADMEvaluationNumber::itemWithNumber(numberOf(token, reader_.units())), token);
}

Ref<ADMEvaluationItemBase> ItemReader::itemOf(const Token& token) const {
  switch (token.type) {
    case ItemType::String:
      return namedItemOf<&ADMEvaluationString::itemWithString>(token);
    case ItemType::Number:
      return numberItemOf(token);
    case ItemType::GlobalConstant:
      return namedItemOf<&ADMEvaluationGlobalConstant::itemWithName>(token);
    case ItemType::GlobalValue:
      return namedItemOf<&ADMEvaluationGlobalValue::itemWithName>(token);
    case ItemType::Selector:
      return namedItemOf<&ADMEvaluationSelector::itemWithSelectorName>(token);
    case ItemType::FeaturePath:
      return featurePathOf(token);
    case ItemType::ProcedureCall:
      if (token.isMemberCall) {
        return namedItemOf<&ADMEvaluationOperatorProcedure::itemWithProcedureName>(token);
      }
      return namedItemOf<&ADMEvaluationProcedure::itemWithProcedureName>(token);
    case ItemType::Not:
      return typedItemOf<&ADMEvaluationUnaryOperation::itemWithOperationType>(token);
    case ItemType::EmptyArguments:
    case ItemType::OpeningBrace:
    case ItemType::ClosingBrace:
      return typedItemOf<&ADMEvaluationNonExecutable::itemWithItemType>(token);
    default:
      return typedItemOf<&ADMEvaluationBinaryOperation::itemWithOperationType>(token);
  }
}

Ref<String> ItemReader::trimmedText(const SourceRange& range) const {
  const CodeUnits& units = reader_.units();
  const auto isNeverTrimmed = [&units](std::size_t at) {
    return units[at] > u' ' && units[at] < 128;
  };
  if (!range.isEmpty() && isNeverTrimmed(range.begin) && isNeverTrimmed(range.end - 1)) {
    return textOf(range);
  }
  return String::create(std::string(trimmed(units.substring(range.begin, range.end))));
}

Ref<ADMEvaluationItemBase> ItemReader::featurePathOf(const Token& token) const {
  const std::optional<std::string_view> text =
      reader_.units().view(token.content.begin, token.range.end);
  if (!text) {
    return placed(ADMEvaluationFeaturePath::itemWithFeaturePathComponents(componentsOf(token)),
                  token);
  }
  Ref<SharedPath> path = SharedPath::pathFor(*text, [&] { return componentsOf(token); });
  return placed(ADMEvaluationFeaturePath::itemWithSharedPath(std::move(path)), token);
}

Ref<Array> ItemReader::componentsOf(const Token& token) const {
  const CodeUnits& units = reader_.units();
  const std::size_t end = token.range.end;
  SourceRange key;
  std::size_t at = token.content.end + 1;
  if (at < end && units[at] == u'[') {
    key = {at + 1, units.findOrNull(u']', at + 1)};
    at = key.end + 1;
  }
  ValueVector components;
  constexpr std::size_t kUsual = 3;
  components.reserve(kUsual);
  components.emplace_back(trimmedText(token.content));
  // What remains begins with a full stop; one that nothing follows adds no component.
  if (at + 1 < end) {
    while (at < end) {
      const std::size_t begin = at + 1;
      at = std::min(units.skipWhile(begin, [](char16_t unit) { return unit != u'.'; }), end);
      components.emplace_back(textOf({begin, at}));
    }
  }
  // Where there is a key, it begins behind three units at least.
  if (key.begin != 0) components.emplace_back(trimmedText(key));
  return Array::create(std::move(components));
}

}  // namespace commandfilter
