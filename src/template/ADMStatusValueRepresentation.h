// A value of a template, made from its description.
#pragma once

#include <cstddef>

#include "evaluation/protocol/ADMArrayIteration.h"
#include "evaluation/protocol/ADMEvaluationContext.h"
#include "expression/ADMEvaluationProcessor.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/DictionaryEntries.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/ADMRepresentationProcessor.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter {

/// Computes the value that a description describes: one value, or, with a "Range", the list of the
/// values for the range's elements; a "Filter" leaves values out. Each expression is compiled when
/// it is first evaluated, and once.
class COMMANDFILTER_EXPORT ADMStatusValueRepresentation final
    : public Implements<Object, ADMRepresentationProcessor> {
 public:
  static const Class kClass;
  /// What its description says. Its own affair.
  struct Description;

  /// nil when the description is nil or has no "Value", or when the context cannot be made.
  /// Creator and configuration may be nil.
  /// @throws Exception when "EvaluationContext" or "Range" is no text, and whatever the
  /// initialiser of a plug-in's context raises.
  [[nodiscard]] static RefPtr<ADMStatusValueRepresentation>
  initWithRepresentationInfo_statusServiceCreator_globalConfiguration(
      const Dictionary* info, ADMStatusServiceCreator* serviceCreator,
      RefPtr<Dictionary> globalConfiguration);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  Value representationData() override;
  void resetEvaluations() override { context_->resetEvaluations(); }
  [[nodiscard]] ADMEvaluationError* lastError() const override { return context_->lastError(); }

  /// The value of an expression, or of a dictionary of expressions and dictionaries as a dictionary
  /// of the same keys without those that are nil; nil when none is left, and for anything else.
  /// @throws Exception whatever the expressions raise, and when dictionaries are nested deeper than
  /// the stack allows.
  Value calculateValue(const Value& valueInfo);
  /// The compiled expression; nil for nil and the empty text.
  RefPtr<ADMEvaluationProcessor> processorForExpression(const String* expression);

  /// Where all expressions of the value are evaluated.
  [[nodiscard]] const Ref<ADMEvaluationContext>& evaluationContext() const noexcept {
    return context_;
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMStatusValueRepresentation(Description description, Ref<ADMEvaluationContext> context);
  ~ADMStatusValueRepresentation() override = default;

  [[nodiscard]] Value calculateDictionary(const Dictionary& valueInfo);
  [[nodiscard]] Value calculateList(ADMArrayIteration& iteration);
  [[nodiscard]] bool passesFilter();
  /// The compiled expression, borrowed; nullptr for the empty text.
  [[nodiscard]] ADMEvaluationProcessor* compiled(const String& expression) {
    // A value asks with the same few, known by their identity.
    constexpr std::size_t kFew = 8;
    std::size_t left = kFew;
    for (const DictionaryEntry& entry : evaluationProcessorsCache_) {
      if (entry.key.object() == &expression) {
        return static_cast<ADMEvaluationProcessor*>(entry.value.object());
      }
      if (--left == 0) break;
    }
    return findCompiled(expression);
  }
  [[nodiscard]] ADMEvaluationProcessor* findCompiled(const String& expression);

  Ref<ADMEvaluationContext> context_;
  /// The context as an iteration; nullptr for a single value.
  ADMArrayIteration* iteration_;
  Value valueInfo_;
  Value filterExpression_;
  Value rangeExpression_;
  bool doNotReturnEmptyArray_ = false;
  /// The compiled expressions by their texts.
  DictionaryEntries evaluationProcessorsCache_;
};

}  // namespace commandfilter
