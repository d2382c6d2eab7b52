#include "MissingNotes.h"

#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Exception.h"

namespace commandfilter::tools {

namespace {

const Dictionary* valuesOf(const Question& question) {
  if (!question.configurationTemplate) return nullptr;
  return castTo<Dictionary>(question.configurationTemplate->objectForKey("TemplateValues"));
}

void noteMissingValues(const Question& question, const EvalArguments& arguments,
                       const Outcome& outcome, std::ostream& messages) {
  if (arguments.expression) return;
  const std::string about = "admtemplate: template " + *arguments.setting.configurationTemplate;
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

// What the description of the answer's value has under the key; nullptr when that is no text.
const String* textOf(const Answer& answer, const Dictionary* values, std::string_view key) {
  if (!answer.key || values == nullptr) return nullptr;
  const Value found = values->objectForKey(Value(answer.key));
  const auto* description = castTo<Dictionary>(found);
  return description != nullptr ? castTo<String>(description->objectForKey(key)) : nullptr;
}

// A value whose class is unknown is evaluated as usual.
void noteMissingContexts(const Question& question, const Outcome& outcome, std::ostream& messages) {
  for (const Answer& answer : outcome.answers) {
    const String* name = textOf(answer, valuesOf(question), "EvaluationContext");
    if (name == nullptr || name->isEmpty() || classNamed(name->view()) != nullptr) continue;
    messages << "admtemplate: " << answer.key->view() << ": there is no class " << name->view()
             << "; load its plug-in with --plugin\n";
  }
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
    if (const String* service = textOf(answer, valuesOf(question), "ServiceName")) {
      services.push_back(String::create(service->text()));
    }
  }
  std::set<std::string> noted;
  for (const Ref<String>& service : services) {
    if (!isMissing(question, *service) || !noted.insert(service->text()).second) continue;
    if (arguments.setting.device) {
      messages << "admtemplate: device " << *arguments.setting.device << " has no service "
               << service->view() << '\n';
    } else {
      messages << "admtemplate: there is no device to ask for " << service->view()
               << "; name one with --device\n";
    }
  }
}

}  // namespace

void noteWhatIsMissing(const Question& question, const Outcome& outcome,
                       const EvalArguments& arguments, std::ostream& messages) {
  noteMissingValues(question, arguments, outcome, messages);
  noteMissingContexts(question, outcome, messages);
  noteMissingServices(question, arguments, outcome, messages);
}

}  // namespace commandfilter::tools
