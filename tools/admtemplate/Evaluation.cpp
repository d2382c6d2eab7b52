#include "Evaluation.h"

#include <algorithm>

#include "WrittenSize.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"

namespace commandfilter::tools {

namespace {

std::vector<Ref<String>> keysOf(const Dictionary& configurationTemplate,
                                const std::vector<std::string>& named) {
  std::vector<Ref<String>> keys;
  keys.reserve(named.size());
  for (const std::string& key : named) keys.push_back(String::create(key));
  if (!named.empty()) return keys;
  const auto* values = castTo<Dictionary>(configurationTemplate.objectForKey("TemplateValues"));
  if (values == nullptr) return keys;
  for (const DictionaryEntry& entry : *values) {
    if (auto* key = castTo<String>(entry.key)) keys.emplace_back(*key);
  }
  return keys;
}

Ref<ADMTemplateProcessor> processorOf(const Question& question) {
  const Ref<Dictionary> empty = Dictionary::create();
  const Dictionary* configuration = question.configurationTemplate.get();
  const RefPtr<ADMTemplateProcessor> processor =
      ADMTemplateProcessor::initWithServiceCreator_configurationTemplate_inputParameters(
          question.services.get(), configuration != nullptr ? configuration : empty.get(),
          question.inputParameters.get());
  return Ref<ADMTemplateProcessor>(*processor);
}

// The answer that `compute` gives, or the reason why it was broken off.
template <typename Compute>
Answer answerOf(RefPtr<String> key, Compute&& compute) {
  Answer answer{std::move(key), {}, {}};
  try {
    Value value = compute();
    requireWritable(value);
    answer.value = std::move(value);
  } catch (const Exception& exception) {
    answer.exception = exception.what();
  }
  return answer;
}

}  // namespace

bool hasErrors(const Outcome& outcome) {
  return !outcome.errors.empty() || !outcome.constantErrors.empty() ||
         std::ranges::any_of(outcome.answers,
                             [](const Answer& answer) { return !answer.exception.empty(); });
}

Outcome evaluateTemplate(const Question& question, const std::vector<std::string>& keys) {
  const Ref<ADMTemplateProcessor> processor = processorOf(question);
  Outcome outcome;
  for (const Ref<String>& key : keysOf(*question.configurationTemplate, keys)) {
    outcome.answers.push_back(
        answerOf(key, [&processor, &key] { return processor->valueForKey(key.get()); }));
  }
  outcome.errors = processor->errors();
  outcome.constantErrors = processor->constantErrors();
  return outcome;
}

Outcome evaluateExpression(const Question& question, const std::string& expression,
                           const std::optional<std::string>& serviceName,
                           const Preparation& prepare) {
  const Ref<ADMTemplateProcessor> processor = processorOf(question);
  DictionaryBuilder info;
  info.set("Value", String::create(expression));
  if (serviceName) info.set("ServiceName", String::create(*serviceName));
  const Ref<Dictionary> description = info.build();
  Outcome outcome;
  RefPtr<ADMStatusValueRepresentation> representation;
  outcome.answers.push_back(answerOf(nullptr, [&] {
    representation = ADMStatusValueRepresentation::
        initWithRepresentationInfo_statusServiceCreator_globalConfiguration(
            description.get(), question.services.get(), processor->globalConfiguration());
    if (representation && prepare) prepare(*processor, *representation);
    return representation ? representation->representationData() : Value();
  }));
  if (representation) {
    if (ADMEvaluationError* error = representation->lastError()) {
      outcome.errors.push_back({String::create(""), RefPtr<ADMEvaluationError>(error)});
    }
  }
  outcome.constantErrors = processor->constantErrors();
  return outcome;
}

}  // namespace commandfilter::tools
