#include "repl/Prompt.h"

#include <algorithm>
#include <exception>
#include <ostream>
#include <utility>

#include "Evaluation.h"
#include "Report.h"
#include "SourceExcerpt.h"
#include "UsageError.h"
#include "device/DeviceSurvey.h"
#include "device/DeviceText.h"
#include "device/Lists.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/ADMEvaluationProcessor.h"
#include "repl/Commands.h"
#include "repl/Trace.h"
#include "repl/TreeText.h"
#include "runtime/Cast.h"

namespace commandfilter::tools {

namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

}  // namespace

Prompt::Prompt(SettingArguments arguments, std::string service, std::ostream& output)
    : arguments_(std::move(arguments)), service_(std::move(service)), output_(output) {
  setting_.emplace(loadSetting(arguments_));
}

bool Prompt::perform(std::string_view line) {
  line = trimmed(line);
  if (line.empty()) return true;
  try {
    if (!line.starts_with(':')) {
      evaluate(std::string(line));
      return true;
    }
    const std::size_t blank = std::min(line.find_first_of(kBlanks), line.size());
    const std::string_view name = line.substr(0, blank);
    if (name == ":quit" || name == ":q") return false;
    performCommand(name, std::string(trimmed(line.substr(blank))));
  } catch (const std::exception& error) {
    fail(error.what());
  }
  return true;
}

void Prompt::performCommand(std::string_view name, const std::string& argument) {
  const auto* const command = std::ranges::find(kPromptCommands, name, &PromptCommand::name);
  if (command == kPromptCommands.end()) {
    fail("there is no command " + std::string(name) + "; :help lists them");
    return;
  }
  const bool wantsArgument = !command->argument.empty() && command->argument.front() != '[';
  if (wantsArgument && argument.empty()) {
    fail(std::string(name) + " wants something: " + std::string(name) + " " +
         std::string(command->argument));
    return;
  }
  if (command->argument.empty() && !argument.empty()) {
    fail(std::string(name) + " stands alone; \"" + argument + "\" is too much");
    return;
  }
  if (name == ":trace") return trace(argument);
  if (name == ":tree") return showTree(argument);
  if (name == ":value") return showValue(argument);
  if (name == ":keys") return showKeys();
  if (name == ":service") return useService(argument);
  if (name == ":device") return showDevice();
  if (name == ":reload") return reload();
  showHelp();
}

void Prompt::fail(const std::string& message) {
  hasFailed_ = true;
  output_ << message << '\n';
}

std::optional<std::string> Prompt::serviceName() const {
  return service_.empty() ? std::nullopt : std::optional(service_);
}

void Prompt::report(const Outcome& outcome) {
  if (hasErrors(outcome)) hasFailed_ = true;
  output_ << plainReport(outcome);
}

void Prompt::evaluate(const std::string& expression) {
  report(evaluateExpression(setting_->question, expression, serviceName()));
}

void Prompt::trace(const std::string& expression) {
  const auto trace = Trace::create(output_);
  const Ref<String> text = String::create(expression);
  const Outcome outcome = evaluateExpression(
      setting_->question, expression, serviceName(),
      [&](ADMTemplateProcessor& processor, ADMStatusValueRepresentation& representation) {
        trace->watch(processor, representation, *text);
      });
  trace->finish();
  if (!hasErrors(outcome)) return;
  // The steps have told the rest.
  Outcome errors = outcome;
  errors.answers.clear();
  hasFailed_ = true;
  output_ << plainReport(errors);
}

void Prompt::showTree(const std::string& expression) {
  const Ref<ADMSingleValueEvaluationContext> context =
      ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(Value(), nullptr);
  const Ref<ADMEvaluationProcessor> processor =
      ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
          String::create(expression), context);
  if (processor->rootItem() != nullptr) {
    output_ << treeText(*processor->rootItem());
    return;
  }
  Outcome outcome;
  outcome.errors.push_back({String::create(""), RefPtr<ADMEvaluationError>(context->lastError())});
  report(outcome);
}

void Prompt::showValue(const std::string& key) {
  if (!setting_->question.configurationTemplate) {
    fail("there is no template; name one when you start: admtemplate repl TEMPLATE");
    return;
  }
  const std::vector<std::string> keys = vocabulary().values();
  if (std::ranges::find(keys, key) == keys.end()) {
    fail("the template has no value named " + key + "; it has " + listOf(keys));
    return;
  }
  report(evaluateTemplate(setting_->question, {key}));
}

void Prompt::showKeys() {
  const Vocabulary names = vocabulary();
  const auto show = [this](const char* what, const char* before, const char* after,
                           std::vector<std::string> keys) {
    if (keys.empty()) return;
    for (std::string& key : keys) key.insert(0, before).append(after);
    output_ << what << listOf(keys) << '\n';
  };
  show("values:    ", "[", "]", names.values());
  show("constants: ", "$", "", names.constants());
  show("macros:    ", "_", "", names.macros());
  show("input:     ", "_InputValue(\"", "\")", names.inputs());
}

void Prompt::showDevice() {
  if (!setting_->device) {
    fail("there is no device; name one when you start: admtemplate repl --device DEVICE");
    return;
  }
  output_ << deviceText(*surveyDevice(setting_->device->serviceInfo()));
}

void Prompt::showHelp() {
  output_ << "An expression is evaluated. Commands:\n";
  constexpr std::size_t kWidth = 17;
  for (const PromptCommand& command : kPromptCommands) {
    std::string usage = std::string(command.name) + " " + std::string(command.argument);
    usage.resize(kWidth, ' ');
    output_ << "  " << usage << command.help << '\n';
  }
}

void Prompt::useService(const std::string& name) {
  const std::vector<std::string> services = vocabulary().services();
  if (!name.empty() && setting_->device &&
      setting_->question.services->statusServiceForName(String::create(name).get()).isNil()) {
    fail("the device has no service named " + name + "; it has " + listOf(services));
    return;
  }
  if (!name.empty()) service_ = name;
  output_ << (service_.empty() ? "no service is asked" : "the service " + service_ + " is asked")
          << "; the device has " << listOf(services) << '\n';
}

void Prompt::reload() {
  // Files with mistakes leave everything as it is.
  SettingArguments files = arguments_;
  files.device = std::nullopt;
  Setting withoutDevice = loadSetting(files);
  setting_.reset();
  try {
    setting_.emplace(loadSetting(arguments_));
  } catch (const UsageError& error) {
    setting_.emplace(std::move(withoutDevice));
    fail(std::string(error.what()) + "; there is no device now");
  }
}

Completion Prompt::completionsOf(std::string_view text) const {
  return complete(text, vocabulary());
}

}  // namespace commandfilter::tools
