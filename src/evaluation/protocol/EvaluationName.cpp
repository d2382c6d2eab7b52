#include "evaluation/protocol/EvaluationName.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

#include "runtime/TextEquality.h"

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

// What a name turned out to be. The text lives in a selector's name.
struct KnownName {
  std::string_view text;
  std::optional<Selector> selector;
  EvaluationSymbol symbol = EvaluationSymbol::None;
  std::size_t argumentIndex = 0;
};

// The names that were asked for last: expressions use the same ones again and again. Each name has
// one place, which it takes from the name that had it before.
class RecentNames {
 public:
  // What is known of the name; found out when it is not remembered. Only a name that a selector can
  // be made from is.
  template <typename Find>
  const KnownName& nameFor(std::string_view text, Find&& find) {
    KnownName& name = names_[placeHash(text) % kPlaces];
    if (!name.selector || !sameText(name.text, text)) name = find();
    return name;
  }

 private:
  static constexpr std::size_t kPlaces = 64;

  std::array<KnownName, kPlaces> names_{};
};

KnownName symbolOf(std::string_view text) {
  KnownName known;
  known.selector = Selector::fromString(text);
  if (known.selector) known.text = known.selector->name();
  const auto found = std::ranges::find(kSymbols, text, &Row::text);
  if (found != kSymbols.end()) {
    known.symbol = found->symbol;
  } else if (text.starts_with(kArgument)) {
    const std::optional<std::size_t> index = numberOf(text.substr(kArgument.size()));
    known.symbol = index ? EvaluationSymbol::Argument : EvaluationSymbol::NoArgument;
    known.argumentIndex = index.value_or(0);
  }
  return known;
}

KnownName procedureOf(std::string_view text) {
  constexpr std::string_view kBeginning = "execute";
  constexpr std::string_view kEnd = "Procedure:";
  std::string name;
  name.reserve(kBeginning.size() + text.size() + kEnd.size());
  name.append(kBeginning).append(text).append(kEnd);
  KnownName known;
  known.selector = Selector::fromString(name);
  if (known.selector) {
    known.text = std::string_view(known.selector->name()).substr(kBeginning.size(), text.size());
  }
  return known;
}

}  // namespace

EvaluationName EvaluationName::ofSymbol(RefPtr<String> name) {
  if (!name) return {nullptr, std::nullopt};
  static constinit RecentNames recent;
  const std::string_view text = name->view();
  const KnownName& known = recent.nameFor(text, [text] { return symbolOf(text); });
  EvaluationName result(std::move(name), known.selector);
  result.symbol_ = known.symbol;
  result.argumentIndex_ = known.argumentIndex;
  return result;
}

EvaluationName EvaluationName::ofProcedure(RefPtr<String> name) {
  if (!name) return {nullptr, std::nullopt};
  static constinit RecentNames recent;
  const std::string_view text = name->view();
  const KnownName& known = recent.nameFor(text, [text] { return procedureOf(text); });
  return {std::move(name), known.selector};
}

}  // namespace commandfilter
