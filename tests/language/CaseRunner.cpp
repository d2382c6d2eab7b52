#include "language/CaseRunner.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "evaluation/protocol/ADMEvaluationError.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/ADMEvaluationLexer.h"
#include "expression/ADMEvaluationProcessor.h"
#include "expression/CodeUnits.h"
#include "expression/TreePrinter.h"
#include "language/CallLog.h"
#include "language/CaseText.h"
#include "runtime/Array.h"
#include "runtime/Description.h"
#include "runtime/Exception.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter::testing {

namespace {

constexpr std::string_view kNone = "none";

// The value of an evaluation, or why there is none.
struct Outcome {
  Value value;
  std::optional<std::string> raised;

  [[nodiscard]] std::string print() const {
    return raised ? "raises " + inQuotes(*raised) : notationOf(value);
  }
};

std::string descriptionOf(const ADMEvaluationError* error) {
  return error != nullptr ? commandfilter::descriptionOf(Value::sharing(error))
                          : std::string(kNone);
}

// The part of the expression that an error points at.
std::string placeOf(const ADMEvaluationError* error) {
  if (error == nullptr || !error->sourceRange() || !error->expression()) return "unknown";
  const CodeUnits units(error->expression()->view());
  const auto [begin, end] = *error->sourceRange();
  if (begin >= units.length()) return "end";
  return units.substring(begin, end);
}

// The items that the lexer alone finds, as their codes and their texts, and its error.
std::string tokensOf(const Ref<String>& expression, const Ref<ADMEvaluationContext>& context) {
  const CodeUnits units(expression->view());
  const auto lexer =
      ADMEvaluationLexer::initWithExpressionString_evaluationContext(expression, context);
  std::string tokens;
  const auto append = [&tokens](const std::string& token) {
    tokens.append(tokens.empty() ? "" : " | ").append(token);
  };
  while (const RefPtr<ADMEvaluationItemBase> item = lexer->nextItem()) {
    const auto [begin, end] = item->sourceRange();
    append(std::to_string(codeOf(item->type())) + " " + units.substring(begin, end));
  }
  if (context->lastError() != nullptr) append(descriptionOf(context->lastError()));
  return tokens.empty() ? std::string(kNone) : tokens;
}

std::string treeOf(const ADMEvaluationProcessor& processor) {
  if (processor.rootItem() == nullptr) return std::string(kNone);
  try {
    return printedTree(*processor.rootItem());
  } catch (const Exception& exception) {
    return "raises " + inQuotes(exception.reason());
  }
}

Outcome evaluate(const ADMEvaluationProcessor& processor, const PreparedContext& prepared,
                 bool walk) {
  try {
    if (!walk) return {processor.executeWithContext(*prepared.context), std::nullopt};
    ValueVector values;
    while (!prepared.iteration->endOfIteration()) {
      values.push_back(processor.executeWithContext(*prepared.context));
      prepared.iteration->iterateNext();
    }
    return {Array::create(std::move(values)), std::nullopt};
  } catch (const Exception& exception) {
    return {Value(), exception.reason()};
  }
}

// One run of a case.
class Run {
 public:
  explicit Run(const Case& tested)
      : tested_(tested),
        setup_(tested.setups->contexts.at(tested.context)),
        expression_(String::create(tested.expression())) {}

  std::vector<std::string> differences() {
    CallLog log;
    const PreparedContext prepared = prepareContext(*tested_.setups, setup_, log);
    const auto processor = ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
        expression_, prepared.context);
    const bool compiledCleanly = errorOf(prepared) == kNone && parentErrorOf(prepared) == kNone;
    if (tested_.tokens) compare("tokens", *tested_.tokens, tokensAlone());
    if (tested_.tree) compare("tree", *tested_.tree, treeOf(*processor));
    log.clear();
    checkEvaluation(*processor, prepared, log, true);
    if (processor->rootItem() != nullptr) {
      evaluateAgain(*processor, compiledCleanly);
      compileAgain(*processor);
    }
    return std::move(differences_);
  }

 private:
  static std::string errorOf(const PreparedContext& prepared) {
    return descriptionOf(prepared.context->lastError());
  }
  static std::string parentErrorOf(const PreparedContext& prepared) {
    return prepared.parent ? descriptionOf(prepared.parent->lastError()) : std::string(kNone);
  }

  [[nodiscard]] std::string tokensAlone() const {
    CallLog log;
    return tokensOf(expression_, prepareContext(*tested_.setups, setup_, log).context);
  }

  void compare(std::string_view what, std::string_view expected, std::string_view got) {
    if (expected == got) return;
    differences_.push_back(prefix_ + std::string(what) + " expected " + shortened(expected) +
                           "\n      got " + shortened(got));
  }

  void checkEvaluation(const ADMEvaluationProcessor& processor, const PreparedContext& prepared,
                       const CallLog& log, bool errorsBelong) {
    const Outcome outcome = evaluate(processor, prepared, setup_.kind == ContextSetup::Kind::Walk);
    const bool matches = outcome.raised ? tested_.value.kind == Notation::Kind::Raises &&
                                              withoutEscapes(tested_.value.text) == *outcome.raised
                                        : tested_.value.matches(outcome.value);
    if (!matches) {
      differences_.push_back(prefix_ + "value expected " + shortened(tested_.value.print()) +
                             "\n      got " + shortened(outcome.print()));
    }
    if (errorsBelong) {
      compare("error", tested_.error.value_or(std::string(kNone)), errorOf(prepared));
      compare("error behind the context", tested_.parentError.value_or(std::string(kNone)),
              parentErrorOf(prepared));
    }
    if (tested_.calls) compare("calls", *tested_.calls, lineOf(log));
    if (tested_.where && errorsBelong) {
      compare("place of the error", *tested_.where, placeOf(prepared.context->recordedError()));
    }
  }

  void evaluateAgain(const ADMEvaluationProcessor& processor, bool compiledCleanly) {
    prefix_ = "evaluated again: ";
    CallLog log;
    const PreparedContext prepared = prepareContext(*tested_.setups, setup_, log);
    log.clear();
    // An error of the compilation stayed in the first context.
    checkEvaluation(processor, prepared, log, compiledCleanly);
  }

  void compileAgain(const ADMEvaluationProcessor& processor) {
    prefix_ = "compiled again: ";
    const std::string tree = treeOf(processor);
    if (tree.starts_with("raises")) return;
    CallLog log;
    const PreparedContext prepared = prepareContext(*tested_.setups, setup_, log);
    const auto again = ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
        String::create(tree), prepared.context);
    compare("tree", tree, treeOf(*again));
  }

  const Case& tested_;
  const ContextSetup& setup_;
  Ref<String> expression_;
  std::vector<std::string> differences_;
  std::string prefix_;
};

}  // namespace

std::vector<std::string> differencesOf(const Case& tested) {
  if (!tested.problem.empty()) return {"cannot be read: " + tested.problem};
  return Run(tested).differences();
}

std::string titleOf(const Case& tested) {
  std::string title = tested.file + ":" + std::to_string(tested.line) + ": ";
  title.append(shortened(tested.text));
  if (!tested.context.empty()) title.append("  (in ").append(tested.context).append(")");
  return title;
}

}  // namespace commandfilter::testing
