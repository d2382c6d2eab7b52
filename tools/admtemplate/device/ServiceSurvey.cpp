#include "device/ServiceSurvey.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMSuppliesStatus.h"

namespace commandfilter::tools {

namespace {

// What a service is asked. Others set something, observe, or answer with objects that no
// description can hold.
bool isQuestion(const Method& row) {
  constexpr std::array<std::string_view, 6> kNot{
      "serviceInfo", "parameters", "setParameters:", "lastError", "delegate", "setDelegate:"};
  const auto colons = std::ranges::count(row.selector, ':');
  return colons <= 1 && row.types.front() != 'v' &&
         std::ranges::find(kNot, row.selector) == kNot.end();
}

// Those about features have a part of their own in a description.
bool isAboutFeatures(std::string_view selector) {
  return selector.find("Feature") != std::string_view::npos;
}

constexpr std::array<const MethodGroup*, 4> kGroups{&ADMInterface::kMethods, &ADMStatus::kMethods,
                                                    &ADMDeviceStatus::kMethods,
                                                    &ADMSuppliesStatus::kMethods};

Value ask(const Value& service, std::string_view message,
          std::initializer_list<Value> arguments = {}) {
  const Selector selector{std::string(message)};
  if (!respondsToSelector(service, selector)) return {};
  try {
    return send(service, selector, arguments);
  } catch (const Exception&) {
    return {};
  }
}

ValueVector elementsOf(const Value& list) {
  const auto* array = castTo<Array>(list);
  return array != nullptr ? ValueVector(array->begin(), array->end()) : ValueVector();
}

// Sets what is known.
void setKnown(DictionaryBuilder& builder, const Value& key, Value value) {
  if (!value.isNil()) builder.set(key, std::move(value));
}
void setKnown(DictionaryBuilder& builder, std::string_view key, Value value) {
  if (!value.isNil()) builder.set(key, std::move(value));
}

Ref<Dictionary> messages(const Value& service) {
  const ValueVector identifiers = elementsOf(ask(service, "suppliesIdentifiers"));
  DictionaryBuilder answers;
  for (const std::string& message : messagesOfService(service)) {
    if (!message.ends_with(':')) {
      setKnown(answers, message, ask(service, message));
      continue;
    }
    DictionaryBuilder byIdentifier;
    for (const Value& identifier : identifiers) {
      setKnown(byIdentifier, identifier, ask(service, message, {identifier}));
    }
    if (byIdentifier.count() != 0) answers.set(message, byIdentifier.build());
  }
  return answers.build();
}

Ref<Dictionary> property(const Value& service, const Value& feature, const Value& name,
                         const ValueVector& identifiers) {
  DictionaryBuilder entry;
  setKnown(entry, "Value", ask(service, "valueForFeature:property:", {feature, name}));
  DictionaryBuilder values;
  for (const Value& identifier : identifiers) {
    setKnown(values, identifier,
             ask(service, "valueForFeature:property:identifier:", {feature, name, identifier}));
  }
  if (values.count() != 0) entry.set("Identifiers", values.build());
  return entry.build();
}

Ref<Dictionary> features(const Value& service) {
  DictionaryBuilder table;
  for (const Value& feature : elementsOf(ask(service, "supportedFeatures"))) {
    DictionaryBuilder entry;
    setKnown(entry, "Value", ask(service, "valueForFeature:", {feature}));
    const Value identifiers = ask(service, "identifiersForFeature:", {feature});
    setKnown(entry, "Identifiers", identifiers);
    DictionaryBuilder properties;
    for (const Value& name :
         elementsOf(ask(service, "supportedPropertiesForFeature:", {feature}))) {
      properties.set(name, property(service, feature, name, elementsOf(identifiers)));
    }
    if (properties.count() != 0) entry.set("Properties", properties.build());
    table.set(feature, entry.build());
  }
  return table.build();
}

}  // namespace

std::vector<std::string> messagesOfService(const Value& service) {
  std::vector<std::string> found;
  for (const MethodGroup* group : kGroups) {
    for (const Method& row : group->methods) {
      std::string name(row.selector);
      if (isQuestion(row) && !isAboutFeatures(name) &&
          respondsToSelector(service, Selector(name))) {
        found.push_back(std::move(name));
      }
    }
  }
  return found;
}

Ref<Dictionary> surveyService(const Value& service) {
  DictionaryBuilder survey;
  survey.set("Messages", messages(service));
  static const Selector kFeatures("supportedFeatures");
  if (respondsToSelector(service, kFeatures)) survey.set("Features", features(service));
  return survey.build();
}

Ref<Dictionary> surveyCapabilities(const Value& service) {
  DictionaryBuilder answers;
  for (const char* name : {"suppliesPlatformCode", "supportedSupplies"}) {
    setKnown(answers, name, ask(service, "valueForFeature:", {String::create(name)}));
  }
  DictionaryBuilder survey;
  survey.set("Messages", answers.build());
  return survey.build();
}

}  // namespace commandfilter::tools
