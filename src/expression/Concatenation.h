// What "+" and "~" do.
#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/ADMEvaluationBinaryOperation.h"
#include "runtime/Export.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Evaluates "a + b + c": arrays and dictionaries are extended, everything else becomes one text.
/// Operations whose left operand is another one are performed together, from the innermost on, so
/// that the text is made once and no piece of it is copied twice. Performs one such chain.
class COMMANDFILTER_EXPORT Concatenation {
 public:
  explicit Concatenation(ADMEvaluationContext& context) noexcept : context_(context) {}
  Concatenation(const Concatenation&) = delete;
  Concatenation& operator=(const Concatenation&) = delete;
  ~Concatenation() { std::destroy_n(held_.begin(), heldCount_); }

  /// The value of the operation; nil when there is none, nil with an error when it failed.
  /// @throws Exception when a value is nested deeper than the stack allows or becomes too large.
  [[nodiscard]] Value perform(const ADMEvaluationBinaryOperation& last);
  /// The text of both operands of "a ~ b"; nil when either is missing.
  [[nodiscard]] Value performIfNotNil(const ADMEvaluationBinaryOperation& operation);

 private:
  /// So many operations are performed together; an inner one beyond them is an operand.
  static constexpr std::size_t kMost = 8;

  void performNext(const ADMEvaluationBinaryOperation& operation);
  void performWith(const ADMEvaluationBinaryOperation& operation, const Value& right);
  void addDescription(const Value& right);
  void addText(const String& text);
  /// The value of an operation's right operand. A literal's is borrowed.
  const Value& valueOfRight(const ADMEvaluationBinaryOperation& operation);
  /// Holds the value that the function makes, which is made in its place.
  template <typename Make>
  const Value& hold(Make&& make);
  [[nodiscard]] Value textSoFar();
  void fail(const ADMEvaluationBinaryOperation& operation);

  ADMEvaluationContext& context_;
  /// The value so far, but for the texts that belong behind it.
  Value value_;
  /// The texts behind a text, borrowed. Written before they are read.
  std::array<const String*, kMost> texts_;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  std::size_t textCount_ = 0;
  /// How long they and the value are together, once there are any.
  std::size_t size_ = 0;
  /// What the right operands gave, and the texts of what was none.
  union {
    std::array<Value, 2 * kMost> held_;
  };
  std::size_t heldCount_ = 0;
};

}  // namespace commandfilter
