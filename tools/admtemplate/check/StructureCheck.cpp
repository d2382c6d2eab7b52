#include "check/StructureCheck.h"

#include <string>
#include <utility>

#include "check/NameText.h"
#include "expression/CodeUnits.h"

namespace commandfilter::tools {

namespace {

constexpr std::size_t kMostComplaints = 20;

bool isProcedure(const Token* token) {
  return token != nullptr && token->type == ItemType::ProcedureCall;
}
bool isPrefix(const Token& token) {
  return token.type == ItemType::Not || (isProcedure(&token) && !token.isMember);
}

// Reads the tokens as a person does: after an operand an operator is expected, and the other way
// round.
class StructureReader {
 public:
  StructureReader(std::string_view expression, const Tokens& tokens)
      : text_(expression), tokens_(tokens) {}

  std::vector<ExpressionComplaint> read() {
    for (const Token& token : tokens_.tokens) {
      if (complaints_.size() >= kMostComplaints) return std::move(complaints_);
      accept(token);
      previous_ = &token;
    }
    finish();
    return std::move(complaints_);
  }

 private:
  enum class Expected { Operand, Operator, Anything };

  void accept(const Token& token) {
    if (token.isUnreadable()) {
      expected_ = Expected::Anything;
    } else if (isOperand(token.type)) {
      expectOperator(token);
      expected_ = Expected::Operator;
    } else if (token.type == ItemType::OpeningBrace) {
      expectOperator(token);
      open_.push_back(&token);
      expected_ = Expected::Operand;
    } else if (token.type == ItemType::ClosingBrace) {
      acceptClosingBrace(token);
    } else if (isPrefix(token)) {
      acceptPrefix(token);
    } else {
      acceptInfix(token);
    }
  }

  void expectOperator(const Token& token) {
    if (expected_ != Expected::Operator) return;
    complain(token.range, "an operator is missing in front of " + spelling(token),
             "put an operator between the two, such as + to join them or a comma in a list");
  }

  void acceptClosingBrace(const Token& token) {
    if (open_.empty()) {
      if (!tokens_.areBracesUnknown) {
        complain(token.range, "no opening brace belongs to this one",
                 "take it out, or put ( where the group begins");
      }
      expected_ = Expected::Operator;
      return;
    }
    const bool isEmpty = previous_ != nullptr && previous_->type == ItemType::OpeningBrace;
    if (expected_ == Expected::Operand && !isEmpty) complainOfMissing(token.range);
    open_.pop_back();
    expected_ = Expected::Operator;
  }

  void acceptPrefix(const Token& token) {
    expectOperator(token);
    const bool bindsTooLate = expected_ == Expected::Operand && previous_ != nullptr &&
                              (isProcedure(previous_) ||
                               (previous_->type == ItemType::Not && token.type == ItemType::Not));
    if (bindsTooLate) {
      complain(token.range,
               spelling(*previous_) + " loses its operand to " + spelling(token) + " behind it",
               "put braces around " + spelling(token) + " and its operand");
    }
    expected_ = Expected::Operand;
  }

  void acceptInfix(const Token& token) {
    // An element of a list may be left out, except the last one.
    const bool isLeftOut =
        token.type == ItemType::MakeList && previous_ != nullptr &&
        (previous_->type == ItemType::OpeningBrace || previous_->type == ItemType::MakeList);
    if (expected_ == Expected::Operand && !isLeftOut) complainOfDoubled(token);
    expected_ = Expected::Operand;
  }

  void complainOfDoubled(const Token& token) {
    const bool isDoubled = previous_ != nullptr && previous_->type == token.type &&
                           previous_->range.end == token.range.begin &&
                           spelling(*previous_) == spelling(token) && !isProcedure(&token);
    if (isDoubled) {
      complain(previous_->range.unitedWith(token.range),
               "there is no operator " + spelling(token) + spelling(token),
               "write " + spelling(token) + " once");
    } else if (previous_ == nullptr || previous_->type == ItemType::OpeningBrace) {
      complain(token.range, "an operand is missing in front of " + spelling(token),
               "put an operand in front of it, or take it out");
    } else {
      complain(token.range,
               "an operand is missing between " + spelling(*previous_) + " and " + spelling(token),
               isProcedure(previous_) ? "write " + spelling(*previous_) + "() for no arguments"
                                      : "put an operand between them, or take one out");
    }
  }

  // In front of a closing brace, or at the end.
  void complainOfMissing(const SourceRange& place) {
    if (previous_ == nullptr || previous_->type == ItemType::OpeningBrace) return;
    if (previous_->type == ItemType::MakeList) {
      complain(previous_->range, "the last element of the list is missing",
               "take the comma out, or write @nil behind it");
    } else if (isProcedure(previous_)) {
      complain(previous_->range, spelling(*previous_) + " has no arguments behind it",
               "write " + spelling(*previous_) + "() for none");
    } else {
      complain(place.isEmpty() ? previous_->range : previous_->range.unitedWith(place),
               "an operand is missing behind " + spelling(*previous_),
               "put an operand behind it, or take it out");
    }
  }

  void finish() {
    const std::size_t end = text_.length();
    if (previous_ == nullptr) {
      complain({end, end}, "the expression is empty", "write what it stands for; @nil for nothing");
      return;
    }
    if (expected_ == Expected::Operand) complainOfMissing({end, end});
    if (tokens_.areBracesUnknown) return;
    for (const Token* brace : open_) {
      if (complaints_.size() >= kMostComplaints) return;
      complain(brace->range, "nothing closes this brace", "put ) where the group ends");
    }
  }

  [[nodiscard]] std::string spelling(const Token& token) const {
    return shownName(text_.substring(token.range.begin, token.range.end));
  }

  void complain(const SourceRange& range, std::string message, std::string remedy) {
    complaints_.push_back(
        {range, {kind::kStructure, Severity::Error, std::move(message), std::move(remedy)}});
  }

  CodeUnits text_;
  const Tokens& tokens_;
  std::vector<ExpressionComplaint> complaints_;
  std::vector<const Token*> open_;
  const Token* previous_ = nullptr;
  Expected expected_ = Expected::Operand;
};

}  // namespace

std::vector<ExpressionComplaint> checkStructure(std::string_view expression, const Tokens& tokens) {
  return StructureReader(expression, tokens).read();
}

}  // namespace commandfilter::tools
