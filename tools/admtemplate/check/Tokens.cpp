#include "check/Tokens.h"

#include <algorithm>
#include <utility>

#include "evaluation/ADMEvaluationContextBase.h"
#include "expression/ADMEvaluationGlobalConstant.h"
#include "expression/ADMEvaluationGlobalValue.h"
#include "expression/ADMEvaluationLexer.h"
#include "expression/ADMEvaluationOperatorProcedure.h"
#include "expression/ADMEvaluationProcedure.h"
#include "expression/ADMEvaluationSelector.h"
#include "expression/CodeUnits.h"
#include "expression/LexicalClasses.h"
#include "runtime/Cast.h"

namespace commandfilter::tools {

namespace {

// The lexer makes items of one class for each type, and of two for calls.
Token tokenOf(ADMEvaluationItemBase& item) {
  Token token{item.type(), false, item.sourceRange(), nullptr};
  switch (item.type()) {
    case ItemType::GlobalConstant:
      token.name = static_cast<ADMEvaluationGlobalConstant&>(item).name();
      break;
    case ItemType::GlobalValue:
      token.name = static_cast<ADMEvaluationGlobalValue&>(item).name();
      break;
    case ItemType::Selector:
      token.name = static_cast<ADMEvaluationSelector&>(item).selectorName();
      break;
    case ItemType::ProcedureCall:
      if (const auto* call = castTo<ADMEvaluationProcedure>(static_cast<Object*>(&item))) {
        token.name = call->procedureName();
      } else {
        token.name = static_cast<ADMEvaluationOperatorProcedure&>(item).procedureName();
        token.isMember = true;
      }
      break;
    default:
      break;
  }
  return token;
}

class Reader {
 public:
  explicit Reader(const Ref<String>& expression)
      : units_(expression->view()),
        context_(
            ADMEvaluationContextBase::initWithStatusService_globalConfiguration(Value(), nullptr)),
        lexer_(
            ADMEvaluationLexer::initWithExpressionString_evaluationContext(expression, context_)) {}

  Tokens read() {
    while (lexer_->currentPosition() <= units_.length()) {
      const std::size_t begin =
          units_.skipWhile(std::min(lexer_->currentPosition(), units_.length()), isBlankUnit);
      if (RefPtr<ADMEvaluationItemBase> item = lexer_->nextItem()) {
        // What belongs to an unreadable word is no token of its own.
        if (item->sourceRange().begin >= skippedUntil_) result_.tokens.push_back(tokenOf(*item));
      } else if (begin < units_.length()) {
        note(begin);
        if (result_.unreadable.size() == Tokens::kMostUnreadable) {
          result_.areBracesUnknown = true;
          break;
        }
      }
    }
    return std::move(result_);
  }

 private:
  void note(std::size_t begin) {
    if (begin < skippedUntil_) return;
    const Unreadable unreadable = unreadableAt(begin);
    result_.unreadable.push_back(unreadable);
    result_.tokens.push_back({ItemType::StartOfExpression, false, unreadable.range, nullptr});
    skippedUntil_ = unreadable.range.end;
  }

  Unreadable unreadableAt(std::size_t begin) {
    using Kind = Unreadable::Kind;
    const char16_t unit = units_[begin];
    const SourceRange rest{begin, units_.length()};
    if (unit == u'"' || unit == u'{') {
      result_.areBracesUnknown = true;
      return {unit == u'"' ? Kind::Text : Kind::Path, rest};
    }
    if (unit == u'-' || isDigitUnit(unit)) return {Kind::Number, numberAt(begin)};
    if (isLetterUnit(unit)) return {Kind::Word, {begin, units_.skipWhile(begin, isNameUnit)}};
    const bool isPair = unit >= 0xD800 && unit < 0xDC00 && begin + 1 < units_.length();
    return {unit == 0 ? Kind::Nul : Kind::Character, {begin, begin + (isPair ? 2U : 1U)}};
  }

  // The lexer has read on to the character that is no digit, which may be a brace.
  SourceRange numberAt(std::size_t begin) {
    const std::size_t last = lexer_->currentPosition() - 1;
    if (last < units_.length() && (units_[last] == u'(' || units_[last] == u')')) {
      result_.areBracesUnknown = true;
    }
    return {begin, std::max(std::min(last, units_.length()), begin + 1)};
  }

  CodeUnits units_;
  Ref<ADMEvaluationContextBase> context_;
  Ref<ADMEvaluationLexer> lexer_;
  Tokens result_;
  std::size_t skippedUntil_ = 0;
};

}  // namespace

Tokens tokensOf(const Ref<String>& expression) { return Reader(expression).read(); }

}  // namespace commandfilter::tools
