// What a template, or one expression, gives.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "evaluation/protocol/ADMEvaluationError.h"
#include "runtime/Dictionary.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/ADMStatusValueRepresentation.h"
#include "template/ADMTemplateProcessor.h"
#include "template/TemplateError.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter::tools {

/// What to evaluate, and over what.
struct Question {
  /// nil for an expression without a template.
  RefPtr<Dictionary> configurationTemplate;
  /// nil when there are none.
  RefPtr<Dictionary> inputParameters;
  Ref<ADMStatusServiceCreator> services;
};

/// One value that was asked for.
struct Answer {
  /// The value's key; nil for an expression.
  RefPtr<String> key;
  /// nil when there is none.
  Value value;
  /// The reason when the computation was broken off by an exception; empty otherwise.
  std::string exception;
};

/// All that an evaluation gave.
struct Outcome {
  /// In the order in which they were asked for.
  std::vector<Answer> answers;
  /// In the order of the template.
  std::vector<TemplateError> errors;
  /// Those of constants, which no report of the values has.
  std::vector<TemplateError> constantErrors;
};

/// True when something has failed, a constant included.
[[nodiscard]] bool hasErrors(const Outcome& outcome);

/// Computes the values with these keys, or all of the template when none is named. The template
/// must be there.
[[nodiscard]] Outcome evaluateTemplate(const Question& question,
                                       const std::vector<std::string>& keys);

/// Gets the template and the value that the expression has become, before it is evaluated.
using Preparation = std::function<void(ADMTemplateProcessor&, ADMStatusValueRepresentation&)>;

/// Computes one expression as a value of the template, over the service of that name when there is
/// one. Its error has no key of its own: the key is empty.
[[nodiscard]] Outcome evaluateExpression(const Question& question, const std::string& expression,
                                         const std::optional<std::string>& serviceName,
                                         const Preparation& prepare = {});

}  // namespace commandfilter::tools
