// Makes the items of an expression.
#pragma once

#include "evaluation/protocol/ADMEvaluationError.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/Token.h"
#include "expression/TokenReader.h"
#include "runtime/Array.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// Reads the tokens of one expression from start to end, and makes items and errors of them for who
/// asks. What the lexer is made of, without being an object itself: a compiler needs one for a
/// moment only.
class COMMANDFILTER_EXPORT ItemReader {
 public:
  /// The expression must outlive the reader.
  explicit ItemReader(const String& expression) : reader_(expression) {}

  /// Reads the next token. False at the end of the expression and after a failure.
  [[nodiscard]] bool next(Token& token) { return reader_.next(token); }
  /// The item of a token of this expression.
  [[nodiscard]] Ref<ADMEvaluationItemBase> itemOf(const Token& token) const;
  /// A new error about why there was no token; nil at the end of the expression, and after a
  /// feature path without an end, which is no error.
  [[nodiscard]] RefPtr<ADMEvaluationError> failure() const {
    if (reader_.failure() == LexicalFailure::None) return nullptr;
    return newError();
  }
  [[nodiscard]] const TokenReader& tokens() const noexcept { return reader_; }

 private:
  [[nodiscard]] RefPtr<ADMEvaluationError> newError() const;
  // Each kind of item apart, so that one does not save the registers that another needs. The
  // factory makes the item of the token's text or of its type.
  template <auto kMake>
  [[nodiscard, gnu::noinline]] Ref<ADMEvaluationItemBase> namedItemOf(const Token& token) const;
  template <auto kMake>
  [[nodiscard, gnu::noinline]] static Ref<ADMEvaluationItemBase> typedItemOf(const Token& token);
  [[nodiscard, gnu::noinline]] Ref<ADMEvaluationItemBase> numberItemOf(const Token& token) const;
  [[nodiscard, gnu::noinline]] Ref<ADMEvaluationItemBase> featurePathOf(const Token& token) const;
  [[nodiscard]] Ref<Array> componentsOf(const Token& token) const;
  [[nodiscard]] Ref<String> trimmedText(const SourceRange& range) const;
  [[nodiscard]] Ref<String> textOf(const SourceRange& range) const;
  // Of an expression that is not ASCII.
  [[nodiscard, gnu::cold, gnu::noinline]] Ref<String> convertedText(const SourceRange& range) const;

  TokenReader reader_;
};

}  // namespace commandfilter
