#include "repl/Vocabulary.h"

#include <algorithm>

#include "check/KnownNames.h"
#include "device/DeviceSurvey.h"
#include "device/ServiceSurvey.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Description.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"

namespace commandfilter::tools {

namespace {

std::vector<std::string> keysOf(const Dictionary* dictionary) {
  std::vector<std::string> keys;
  if (dictionary == nullptr) return keys;
  for (const DictionaryEntry& entry : *dictionary) keys.push_back(descriptionOf(entry.key));
  return keys;
}

}  // namespace

std::vector<std::string> Vocabulary::section(std::string_view name) const {
  const RefPtr<Dictionary>& configuration = setting_.question.configurationTemplate;
  return keysOf(configuration ? castTo<Dictionary>(configuration->objectForKey(name)) : nullptr);
}

std::vector<std::string> Vocabulary::values() const { return section("TemplateValues"); }
std::vector<std::string> Vocabulary::constants() const { return section("TemplateConstants"); }
std::vector<std::string> Vocabulary::macros() const { return section("TemplateMacroses"); }
std::vector<std::string> Vocabulary::inputs() const {
  return keysOf(setting_.question.inputParameters.get());
}

std::vector<std::string> Vocabulary::procedures() {
  const std::vector<std::string_view> names = proceduresOf(ADMSingleValueEvaluationContext::kClass);
  return {names.begin(), names.end()};
}

std::vector<std::string> Vocabulary::externals() {
  const std::vector<std::string_view> names = externalProcedures();
  return {names.begin(), names.end()};
}

RefPtr<Dictionary> Vocabulary::describedServices() const {
  if (!setting_.device || setting_.device->isReal()) return nullptr;
  const Ref<Dictionary> survey = surveyDevice(setting_.device->serviceInfo());
  return RefPtr<Dictionary>(castTo<Dictionary>(survey->objectForKey("StatusServices")));
}

std::vector<std::string> Vocabulary::services() const {
  if (!setting_.device) return {};
  if (const RefPtr<Dictionary> described = describedServices()) return keysOf(described.get());
  return {std::string(kDeviceStatusService), std::string(kSuppliesStatusService),
          std::string(kCapabilitiesService)};
}

Value Vocabulary::service() const {
  if (serviceName_.empty()) return {};
  return setting_.question.services->statusServiceForName(String::create(serviceName_).get());
}

std::vector<std::string> Vocabulary::names() const {
  std::vector<std::string> names{"nil", "service", "true", "false", "element", "index", "initial"};
  const Value asked = service();
  if (asked.isNil()) return names;
  for (std::string& message : messagesOfService(asked)) names.push_back(std::move(message));
  const RefPtr<Dictionary> described = describedServices();
  const auto* own = described ? castTo<Dictionary>(described->objectForKey(serviceName_)) : nullptr;
  if (own == nullptr) return names;
  for (std::string& message : keysOf(castTo<Dictionary>(own->objectForKey("Messages")))) {
    if (std::ranges::find(names, message) == names.end()) names.push_back(std::move(message));
  }
  return names;
}

std::vector<std::string> Vocabulary::textsOf(std::string_view message,
                                             std::initializer_list<Value> arguments) const {
  std::vector<std::string> texts;
  const Value asked = service();
  const Selector selector{message};
  if (!respondsToSelector(asked, selector)) return texts;
  try {
    const Value list = send(asked, selector, arguments);
    const auto* array = castTo<Array>(list);
    if (array == nullptr) return texts;
    for (const Value& element : *array) texts.push_back(descriptionOf(element));
  } catch (const Exception&) {
    // A service that fails has no names to offer.
  }
  return texts;
}

std::vector<std::string> Vocabulary::features() const { return textsOf("supportedFeatures", {}); }
std::vector<std::string> Vocabulary::properties(const std::string& feature) const {
  return textsOf("supportedPropertiesForFeature:", {String::create(feature)});
}
std::vector<std::string> Vocabulary::identifiers(const std::string& feature) const {
  return textsOf("identifiersForFeature:", {String::create(feature)});
}

}  // namespace commandfilter::tools
