#include "check/LexicalCheck.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "check/NameText.h"
#include "expression/CodeUnits.h"
#include "expression/LexicalClasses.h"

namespace commandfilter::tools {

namespace {

// What to write for characters that other languages use.
struct Row {
  std::string_view characters;
  std::string_view remedy;
};
constexpr std::array kRows{
    Row{"<", "write lt, or le for less or equal"},
    Row{">", "write gt, or ge for greater or equal"},
    Row{"*/%^", "there is no arithmetic; a plug-in can have a procedure for it"},
    Row{"'`\xE2\x80\x98\xE2\x80\x99\xE2\x80\x9C\xE2\x80\x9D\xE2\x80\x9E\xC2\xAB\xC2\xBB",
        "put texts between plain double quotes"},
    Row{".", "numbers are whole; a path's full stop follows its brace or bracket directly"},
    Row{"]", "take it out, or put [ where the name of a value begins"},
    Row{"}", "take it out, or put { where a path begins"},
    Row{"?:", "write condition then value else other"},
    Row{";", "take it out; an expression has no end sign"},
    Row{"#", "take it out; expressions have no comments"},
};

std::string remedyForCharacter(std::string_view character) {
  const auto* row = std::ranges::find_if(kRows, [character](const Row& candidate) {
    return candidate.characters.find(character) != std::string_view::npos;
  });
  return row != kRows.end() ? std::string(row->remedy)
                            : "take it out, or put it into a text between double quotes";
}

class ReadabilityCheck {
 public:
  ReadabilityCheck(std::string_view expression, KnownNames& names)
      : text_(expression), names_(names) {}

  ExpressionComplaint complaintAbout(const Unreadable& place) {
    using Kind = Unreadable::Kind;
    const std::string shown = shownName(text_.substring(place.range.begin, place.range.end));
    switch (place.kind) {
      case Kind::Word:
        return complain(place, shown + " is no operator", remedyForWord(place.range));
      case Kind::Number:
        return complain(place, "a number has no digits behind " + shown,
                        shown.starts_with('-')
                            ? "put the minus sign right in front of digits; there is no subtraction"
                            : "put hexadecimal digits behind 0x");
      case Kind::Text:
        return complain(place, "nothing closes this text", "put \" where the text ends");
      case Kind::Path:
        return complain(place, "nothing closes this path, so it is left out with all behind it",
                        "put } where the name ends, and ] where a key ends");
      case Kind::Nul:
        return complain(place, "a NUL character ends the expression here", "take it out");
      case Kind::Character:
        break;
    }
    return complain(place, "the character " + shown + " begins nothing",
                    remedyForCharacter(text_.substring(place.range.begin, place.range.end)));
  }

 private:
  std::string remedyForWord(const SourceRange& range) {
    const bool isBehindDigit = range.begin > 0 && isDigitUnit(text_[range.begin - 1]);
    if (isBehindDigit && (text_[range.begin] == u'X' || text_[range.begin] == u'x')) {
      return "write 0x with a small x";
    }
    const std::size_t next = text_.skipWhile(range.end, isBlankUnit);
    const bool isCalled = next < text_.length() && text_[next] == u'(';
    return names_.remedyForWord(text_.substring(range.begin, range.end), isCalled);
  }

  static ExpressionComplaint complain(const Unreadable& place, std::string message,
                                      std::string remedy) {
    return {place.range, {kind::kLexical, Severity::Error, std::move(message), std::move(remedy)}};
  }

  CodeUnits text_;
  KnownNames& names_;
};

}  // namespace

std::vector<ExpressionComplaint> checkReadability(std::string_view expression, const Tokens& tokens,
                                                  KnownNames& names) {
  std::vector<ExpressionComplaint> complaints;
  if (tokens.unreadable.empty()) return complaints;
  ReadabilityCheck check(expression, names);
  for (const Unreadable& place : tokens.unreadable) {
    complaints.push_back(check.complaintAbout(place));
  }
  return complaints;
}

}  // namespace commandfilter::tools
