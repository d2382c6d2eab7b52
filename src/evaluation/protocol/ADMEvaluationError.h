// What went wrong in an expression.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "evaluation/protocol/SourceRange.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Format.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// The kinds of errors; the numbers are what error reports show.
enum class ErrorCategory : std::int32_t {
  Lexical = 0,
  Structural = 1,
  Runtime = 2,
};

/// An error that the expression machinery recorded on a context.
class COMMANDFILTER_EXPORT ADMEvaluationError final : public Object {
 public:
  static const Class kClass;

  /// An error whose description is the format applied to the arguments. A description that cannot
  /// be formatted is the format itself.
  [[nodiscard]] static Ref<ADMEvaluationError> errorWithCategory_descriptionFormat_arguments(
      ErrorCategory category, std::string_view format, std::span<const FormatArgument> arguments);
  /// The same with the arguments written out.
  template <typename... Arguments>
  [[nodiscard]] static Ref<ADMEvaluationError> errorWithCategory_descriptionFormat(
      ErrorCategory category, std::string_view format, const Arguments&... arguments) {
    if constexpr (sizeof...(Arguments) == 0) {
      return errorWithCategory_descriptionFormat_arguments(category, format, {});
    } else {
      const FormatArgument list[] = {FormatArgument(arguments)...};
      return errorWithCategory_descriptionFormat_arguments(category, format, list);
    }
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// "Error", the category, a colon and the description.
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] ErrorCategory category() const noexcept { return category_; }
  /// The category as the number that reports show.
  [[nodiscard]] std::int32_t errorCategory() const noexcept {
    return static_cast<std::int32_t>(category_);
  }
  [[nodiscard]] Ref<String> errorDescription() const noexcept { return description_; }

  /// Where the item stands that raised the error; none when nobody knows.
  [[nodiscard]] const std::optional<SourceRange>& sourceRange() const noexcept { return range_; }
  /// The expression that the range belongs to; nil when nobody knows.
  [[nodiscard]] const RefPtr<String>& expression() const noexcept { return expression_; }
  /// Notes where the error was raised; the first note, which comes from the innermost item, stays.
  void noteSourceRange(const SourceRange& range) noexcept {
    if (!range_) range_ = range;
  }
  /// Notes the expression; the first note stays.
  void noteExpression(const Ref<String>& expression) noexcept {
    if (!expression_) expression_ = expression;
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMEvaluationError(ErrorCategory category, Ref<String> description)
      : category_(category), description_(std::move(description)) {}
  ~ADMEvaluationError() override = default;

  ErrorCategory category_;
  Ref<String> description_;
  std::optional<SourceRange> range_;
  RefPtr<String> expression_;
};

}  // namespace commandfilter
