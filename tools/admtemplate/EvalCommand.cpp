#include "EvalCommand.h"

#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "Device.h"
#include "Evaluation.h"
#include "InputFile.h"
#include "NoDevice.h"
#include "PlugIns.h"
#include "Report.h"
#include "UsageError.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
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

const Dictionary* valuesOf(const Question& question) {
  if (!question.configurationTemplate) return nullptr;
  return castTo<Dictionary>(question.configurationTemplate->objectForKey("TemplateValues"));
}

// What is no error of the template, but seldom meant.
void noteValuesThatAreNot(const Question& question, const EvalArguments& arguments,
                          const Outcome& outcome, std::ostream& messages) {
  if (arguments.expression) return;
  const std::string about = "admtemplate: template " + *arguments.configurationTemplate;
  const Dictionary* values = valuesOf(question);
  if (outcome.answers.empty()) {
    messages << about << " has no values; they stand in a dictionary under TemplateValues\n";
  }
  for (const Answer& answer : outcome.answers) {
    const Value description = values != nullptr ? values->objectForKey(Value(answer.key)) : Value();
    if (description.isNil()) {
      messages << about << " has no value named " << answer.key->view() << '\n';
    } else if (castTo<Dictionary>(description) == nullptr) {
      messages << about << ": " << answer.key->view()
               << " is no dictionary, which a value's description must be\n";
    }
  }
}

// The service that the answer was asked of; nullptr when it names none.
const String* serviceOf(const Answer& answer, const Dictionary* values) {
  if (!answer.key || values == nullptr) return nullptr;
  const Value found = values->objectForKey(Value(answer.key));
  const auto* description = castTo<Dictionary>(found);
  return description != nullptr ? castTo<String>(description->objectForKey("ServiceName"))
                                : nullptr;
}

bool isMissing(const Question& question, const String& service) {
  try {
    return question.services->statusServiceForName(&service).isNil();
  } catch (const Exception&) {
    // The value says so.
    return false;
  }
}

// Whoever asks a service that is not there gets nil without an error.
void noteMissingServices(const Question& question, const EvalArguments& arguments,
                         const Outcome& outcome, std::ostream& messages) {
  std::vector<Ref<String>> services;
  if (arguments.service) services.push_back(String::create(*arguments.service));
  for (const Answer& answer : outcome.answers) {
    if (const String* service = serviceOf(answer, valuesOf(question))) {
      services.push_back(String::create(service->text()));
    }
  }
  std::set<std::string> noted;
  for (const Ref<String>& service : services) {
    if (!isMissing(question, *service) || !noted.insert(service->text()).second) continue;
    if (arguments.device) {
      messages << "admtemplate: device " << *arguments.device << " has no service "
               << service->view() << '\n';
    } else {
      messages << "admtemplate: there is no device to ask for " << service->view()
               << "; name one with --device\n";
    }
  }
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
  noteValuesThatAreNot(question, arguments, outcome, messages);
  noteMissingServices(question, arguments, outcome, messages);
  noteBrokenOff(outcome, arguments, messages);
  return arguments.strict && failed(outcome) ? 1 : 0;
}

}  // namespace commandfilter::tools
