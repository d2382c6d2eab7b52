// The steps of an evaluation.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <set>
#include <string>

#include "expression/ADMEvaluationProcessor.h"
#include "repl/SourceText.h"
#include "template/ADMStatusValueRepresentation.h"
#include "template/ADMTemplateProcessor.h"

namespace commandfilter::tools {

/// Writes a line for each item of the trees that it watches whenever the item has been evaluated:
/// the item as it is written, and its value or its error. What is evaluated for an item stands
/// before it and further to the right. Texts and numbers, which are their own values, have no line.
///
/// To watch a tree is to put an item of the trace around each of its items, so evaluations that
/// nobody watches know nothing of it.
class Trace : public std::enable_shared_from_this<Trace> {
 public:
  /// Writes to a stream that must live as long as the watched trees.
  [[nodiscard]] static std::shared_ptr<Trace> create(std::ostream& output);

  /// Watches the expressions of a value and all that it can reach: the values and macros of its
  /// template. `expression`: the value's own.
  void watch(ADMTemplateProcessor& processor, ADMStatusValueRepresentation& representation,
             const String& expression);
  /// Watches one expression; the second time it changes nothing.
  void watch(ADMEvaluationProcessor& processor);

  /// Called around the evaluation of an item.
  void begin() noexcept { ++depth_; }
  void end(const SourceText& source, const SourceRange& extent, const std::string& result);
  /// After an exception, whose reason is written once.
  void breakOff(const SourceText& source, const SourceRange& extent, const std::string& reason);

  /// The text of an error that has not been shown before; empty otherwise.
  [[nodiscard]] std::string newError(const ADMEvaluationError* before,
                                     const ADMEvaluationContext& context);
  /// Tells how many steps were left out, if any.
  void finish();

 private:
  explicit Trace(std::ostream& output) noexcept : output_(output) {}

  void watchMacros(const Dictionary& macros, ADMStatusValueRepresentation& representation);
  void watchExpressions(const Value& described, ADMStatusValueRepresentation& representation);

  std::ostream& output_;
  std::size_t depth_ = 0;
  std::size_t steps_ = 0;
  bool isBrokenOff_ = false;
  /// The error that was shown last; held, so that no new one can be taken for it.
  RefPtr<ADMEvaluationError> shown_;
  /// What is watched already.
  std::set<const ADMEvaluationProcessor*> watched_;
};

}  // namespace commandfilter::tools
