// A name in an expression, ready for dispatch.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "evaluation/protocol/EvaluationSymbol.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/Selector.h"
#include "runtime/String.h"

namespace commandfilter {

/// A name as written and the selector that it stands for, found once when an expression is
/// compiled instead of at every evaluation.
class COMMANDFILTER_EXPORT EvaluationName {
 public:
  /// The name of a value of a context or a service: the selector is spelled as the name. nil is a
  /// name without text.
  [[nodiscard]] static EvaluationName ofSymbol(RefPtr<String> name);
  /// The name of a procedure: the selector is "execute%@Procedure:" with the name.
  [[nodiscard]] static EvaluationName ofProcedure(RefPtr<String> name);

  /// The name as written; nil when there is none.
  [[nodiscard]] const RefPtr<String>& string() const noexcept { return string_; }
  [[nodiscard]] std::string_view text() const noexcept { return textOf(string_.get()); }
  /// None when no selector can be made from the name.
  [[nodiscard]] const std::optional<Selector>& selector() const noexcept { return selector_; }
  /// The method of a class for the selector; nullptr when there is none.
  [[nodiscard]] const Method* methodOf(const Class& info) const noexcept {
    return selector_ ? method_.instanceMethod(info, *selector_) : nullptr;
  }
  /// What the name of a value is to the contexts.
  [[nodiscard]] EvaluationSymbol symbol() const noexcept { return symbol_; }
  /// Which argument of a macro the symbol `Argument` is.
  [[nodiscard]] std::size_t argumentIndex() const noexcept { return argumentIndex_; }

 private:
  EvaluationName(RefPtr<String> string, std::optional<Selector> selector)
      : string_(std::move(string)), selector_(selector) {}

  RefPtr<String> string_;
  std::optional<Selector> selector_;
  EvaluationSymbol symbol_ = EvaluationSymbol::None;
  std::size_t argumentIndex_ = 0;
  mutable RememberedMethod method_;
};

}  // namespace commandfilter
