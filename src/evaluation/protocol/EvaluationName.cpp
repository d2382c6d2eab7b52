#include "evaluation/protocol/EvaluationName.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

namespace commandfilter {

namespace {

struct Row {
  std::string_view text;
  EvaluationSymbol symbol;
};

constexpr std::array kSymbols{
    Row{"nil", EvaluationSymbol::Nil},
    Row{"service", EvaluationSymbol::Service},
    Row{"true", EvaluationSymbol::True},
    Row{"false", EvaluationSymbol::False},
    Row{"element", EvaluationSymbol::Element},
    Row{"identifier", EvaluationSymbol::Identifier},
    Row{"index", EvaluationSymbol::Index},
    Row{"initial", EvaluationSymbol::Initial},
    Row{"argc", EvaluationSymbol::ArgumentCount},
    Row{"argv", EvaluationSymbol::ArgumentList},
};
constexpr std::string_view kArgument = "arg";

// A number as "%d" writes it: no sign, no leading zero.
std::optional<std::size_t> numberOf(std::string_view digits) noexcept {
  if (digits.empty() || (digits.front() == '0' && digits.size() > 1)) return std::nullopt;
  std::size_t number = 0;
  const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (end.ec != std::errc() || end.ptr != digits.data() + digits.size()) return std::nullopt;
  return number;
}

}  // namespace

EvaluationName EvaluationName::ofSymbol(RefPtr<String> name) {
  std::optional<Selector> selector;
  if (name) selector = Selector::fromString(name->view());
  EvaluationName result(std::move(name), selector);
  result.findSymbol();
  return result;
}

EvaluationName EvaluationName::ofProcedure(RefPtr<String> name) {
  std::optional<Selector> selector;
  if (name) {
    std::string text;
    text.reserve(name->view().size() + 18);
    text.append("execute").append(name->view()).append("Procedure:");
    selector = Selector::fromString(text);
  }
  return {std::move(name), selector};
}

void EvaluationName::findSymbol() noexcept {
  const std::string_view name = text();
  const auto found = std::ranges::find(kSymbols, name, &Row::text);
  if (found != kSymbols.end()) {
    symbol_ = found->symbol;
  } else if (name.starts_with(kArgument)) {
    const std::optional<std::size_t> index = numberOf(name.substr(kArgument.size()));
    symbol_ = index ? EvaluationSymbol::Argument : EvaluationSymbol::NoArgument;
    argumentIndex_ = index.value_or(0);
  }
}

}  // namespace commandfilter
