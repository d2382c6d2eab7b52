// The procedures that make text.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "evaluation/ProcedureArguments.h"
#include "evaluation/ProcedureGroups.h"
#include "evaluation/ProcedureSignatures.h"
#include "expression/CodeUnits.h"
#include "runtime/Cast.h"
#include "runtime/SizeLimits.h"
#include "runtime/String.h"
#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

// A quote is written as the character of its low 8 bits.
std::uint8_t quoteOf(char16_t unit) noexcept { return static_cast<std::uint8_t>(unit & 0xFFU); }

struct Quotes {
  std::uint8_t opening = '"';
  std::uint8_t closing = '"';
};

// The first two characters of a text; of one that is missing, and for no text, the usual ones.
Quotes quotesIn(const String* text) {
  Quotes quotes;
  if (text == nullptr) return quotes;
  const CodeUnits units(text->view());
  if (units.length() > 0) quotes.opening = quoteOf(units[0]);
  quotes.closing = units.length() > 1 ? quoteOf(units[1]) : quotes.opening;
  return quotes;
}

/// _Enquote(text [, quotes]): the text between quotes.
Value enquote(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("Enquote").accepts(countOf(items))) {
    // The text names another procedure and is part of the contract.
    return failWith(context, "Incorrect number of arguments in _TemplateValue");
  }
  Value value = evaluateArgument(items, 0, context);
  const auto* text = castTo<String>(value);
  if (text == nullptr) return {};
  if (text->isEmpty()) return value;
  Quotes quotes;
  if (countOf(items) == 2) quotes = quotesIn(castTo<String>(evaluateArgument(items, 1, context)));
  std::string quoted;
  appendCodePoint(quoted, quotes.opening);
  quoted.append(text->view());
  appendCodePoint(quoted, quotes.closing);
  checkTextSize(quoted.size());
  return String::create(std::move(quoted));
}

/// _EndLine(): a line feed.
Value endLine(ADMEvaluationContextBase& /*context*/, const Array* /*items*/) {
  return String::create("\n");
}

constexpr std::array kMethods{
    method<&enquote>("executeEnquoteProcedure:"),
    method<&endLine>("executeEndLineProcedure:"),
};

}  // namespace

constinit const MethodGroup kStringProcedures{"StringProcedures", kMethods};

}  // namespace commandfilter
