// Cuts an expression into items.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/CodeUnits.h"
#include "expression/ItemType.h"
#include "expression/RecentPaths.h"
#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Number.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// Reads one expression from start to end. A lexical error is recorded on the context and ends the
/// items.
class COMMANDFILTER_EXPORT ADMEvaluationLexer final : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationLexer> initWithExpressionString_evaluationContext(
      Ref<String> expression, Ref<ADMEvaluationContext> context);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The next item; nil at the end of the expression and after an error.
  [[nodiscard]] RefPtr<ADMEvaluationItemBase> nextItem();
  /// How many code units have been read, one more once the end has been read.
  [[nodiscard]] std::size_t currentPosition() const noexcept { return currentPosition_; }
  /// The type of the item that was returned last.
  [[nodiscard]] ItemType previousType() const noexcept { return previousType_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMEvaluationLexer(Ref<String> expression, Ref<ADMEvaluationContext> context);
  ~ADMEvaluationLexer() override = default;

  // Where the parts of a feature path stand: the name, what follows the first full stop, the key.
  struct PathPlaces {
    std::size_t nameBegin = 0;
    std::size_t nameEnd = 0;
    std::size_t partsBegin = 0;
    std::size_t partsEnd = 0;
    std::size_t keyBegin = 0;
    std::size_t keyEnd = 0;
    bool hasKey = false;
  };

  // The readers start behind the character that selected them. The end of the expression reads as
  // the unit 0.
  char16_t nextChar() noexcept;
  void putCharBack() noexcept;
  void skipWhitespaces() noexcept;
  /// A blank that ended a token stays read; any other unit is read again.
  void applyTerminator(char16_t unit) noexcept;
  /// Reads units that belong to a name, and the unit behind them. Gives where the name ends.
  template <typename Belongs>
  std::size_t readWhile(Belongs belongs) noexcept;

  /// Reads up to the closing unit and that unit, or to the end. Gives where the text in between
  /// ends.
  std::size_t readTo(char16_t closing) noexcept;
  /// True when the closing unit stands there.
  [[nodiscard]] bool endsWith(std::size_t end, char16_t closing) const noexcept;

  RefPtr<ADMEvaluationItemBase> readItem();
  RefPtr<ADMEvaluationItemBase> readProcedure();
  RefPtr<ADMEvaluationItemBase> readNotOrUnequal();
  RefPtr<ADMEvaluationItemBase> readNumber();
  RefPtr<ADMEvaluationItemBase> readOperator();
  Ref<String> readGlobalName();
  Ref<String> readStandardIdentifier();
  Ref<String> readSelector();
  RefPtr<String> readString();
  RefPtr<Array> readIdentifiersPath();
  [[nodiscard]] Ref<Array> pathAt(const PathPlaces& places) const;
  [[nodiscard]] Ref<String> trimmedBetween(std::size_t begin, std::size_t end) const;
  [[nodiscard]] Ref<String> stringBetween(std::size_t begin, std::size_t end) const;
  [[nodiscard]] Number numberBetween(std::size_t begin, std::size_t end, int base,
                                     bool negative) const;

  template <typename... Arguments>
  std::nullptr_t fail(std::string_view format, const Arguments&... arguments);

  Ref<String> expressionString_;
  CodeUnits units_;
  Ref<ADMEvaluationContext> context_;
  std::size_t currentPosition_ = 0;
  /// Where the token ends, for those that read more than themselves; 0 for the others.
  std::size_t tokenEnd_ = 0;
  ItemType previousType_ = ItemType::StartOfExpression;
  RecentPaths recentPaths_;
};

}  // namespace commandfilter
