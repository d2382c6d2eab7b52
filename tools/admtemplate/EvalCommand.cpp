#include "EvalCommand.h"

#include <ostream>
#include <utility>

#include "Evaluation.h"
#include "MissingNotes.h"
#include "Report.h"
#include "UsageError.h"

namespace commandfilter::tools {

namespace {

EvalArguments arranged(EvalArguments arguments) {
  if (!arguments.namedTemplate) return arguments;
  std::optional<std::string>& place = arguments.setting.configurationTemplate;
  if (place) arguments.keys.insert(arguments.keys.begin(), *place);
  place = std::exchange(arguments.namedTemplate, std::nullopt);
  return arguments;
}

void requireSense(const EvalArguments& arguments) {
  if (!arguments.setting.configurationTemplate && !arguments.expression) {
    throw UsageError("nothing to evaluate: name a template, or give an --expression");
  }
  if (arguments.expression && !arguments.keys.empty()) {
    throw UsageError("keys and --expression exclude each other: an expression is one value");
  }
  if (arguments.service && !arguments.expression) {
    throw UsageError("--service belongs to --expression; in a template, each value names its own");
  }
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

}  // namespace

int runEval(const EvalArguments& given, std::ostream& report, std::ostream& messages) {
  const EvalArguments arguments = arranged(given);
  requireSense(arguments);
  const Setting setting = loadSetting(arguments.setting);
  const Question& question = setting.question;
  const Outcome outcome =
      arguments.expression ? evaluateExpression(question, *arguments.expression, arguments.service)
                           : evaluateTemplate(question, arguments.keys);
  // Written before the notes, also where both go to one file.
  report << textOf(outcome, arguments) << std::flush;
  noteWhatIsMissing(question, outcome, arguments, messages);
  noteBrokenOff(outcome, arguments, messages);
  if (setting.device) setting.device->noteComplaints(messages);
  return arguments.strict && hasErrors(outcome) ? 1 : 0;
}

}  // namespace commandfilter::tools
