#include "EvalCommand.h"

#include <algorithm>
#include <ostream>

#include "Device.h"
#include "Evaluation.h"
#include "InputFile.h"
#include "MissingNotes.h"
#include "NoDevice.h"
#include "PlugIns.h"
#include "Report.h"
#include "UsageError.h"
#include "template/status/ADMDMFStatusServiceCreator.h"

namespace commandfilter::tools {

namespace {

void requireSense(const EvalArguments& arguments) {
  if (!arguments.configurationTemplate && !arguments.expression) {
    throw UsageError("nothing to evaluate: name a template, or give an --expression");
  }
  if (arguments.expression && !arguments.keys.empty()) {
    throw UsageError("keys and --expression exclude each other: an expression is one value");
  }
  if (arguments.service && !arguments.expression) {
    throw UsageError("--service belongs to --expression; in a template, each value names its own");
  }
}

Ref<ADMStatusServiceCreator> servicesOf(const std::optional<std::string>& device) {
  if (!device) return NoDevice::create();
  const RefPtr<ADMDMFStatusServiceCreator> creator =
      ADMDMFStatusServiceCreator::initWithDMFServiceInfo(openDevice(*device));
  return Ref<ADMStatusServiceCreator>(*creator);
}

Question questionOf(const EvalArguments& arguments) {
  RefPtr<Dictionary> configuration;
  if (arguments.configurationTemplate) {
    configuration = readDictionary(*arguments.configurationTemplate, "template");
  }
  RefPtr<Dictionary> input;
  if (arguments.input) input = readDictionary(*arguments.input, "input");
  for (const std::string& plugIn : arguments.plugIns) loadPlugIn(plugIn);
  return {std::move(configuration), std::move(input), servicesOf(arguments.device)};
}

std::string textOf(const Outcome& outcome, const EvalArguments& arguments) {
  const bool isSingle = arguments.expression.has_value();
  switch (arguments.format) {
    case ReportFormat::JSON:
      return jsonReport(outcome, isSingle);
    case ReportFormat::PropertyList:
      return propertyListReport(outcome, isSingle);
    case ReportFormat::Text:
      break;
  }
  return plainReport(outcome);
}

// Only the text for people has a place for computations that were broken off.
void noteBrokenOff(const Outcome& outcome, const EvalArguments& arguments, std::ostream& messages) {
  if (arguments.format == ReportFormat::Text) return;
  for (const Answer& answer : outcome.answers) {
    if (answer.exception.empty()) continue;
    messages << "admtemplate: " << (answer.key ? answer.key->view() : "the expression")
             << ": broken off: " << answer.exception << '\n';
  }
}

bool failed(const Outcome& outcome) {
  return !outcome.errors.empty() || !outcome.constantErrors.empty() ||
         std::ranges::any_of(outcome.answers,
                             [](const Answer& answer) { return !answer.exception.empty(); });
}

}  // namespace

int runEval(const EvalArguments& arguments, std::ostream& report, std::ostream& messages) {
  requireSense(arguments);
  const Question question = questionOf(arguments);
  const Outcome outcome =
      arguments.expression ? evaluateExpression(question, *arguments.expression, arguments.service)
                           : evaluateTemplate(question, arguments.keys);
  // Written before the notes, also where both go to one file.
  report << textOf(outcome, arguments) << std::flush;
  noteWhatIsMissing(question, outcome, arguments, messages);
  noteBrokenOff(outcome, arguments, messages);
  return arguments.strict && failed(outcome) ? 1 : 0;
}

}  // namespace commandfilter::tools
