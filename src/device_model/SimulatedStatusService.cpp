#include "device_model/SimulatedStatusService.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Cast.h"
#include "runtime/Description.h"

namespace commandfilter {

struct SimulatedStatusService::FeatureMessage {
  std::string_view selector;
  std::string_view types;
  Value (*answer)(const FeatureTable& features, const Invocation& invocation);
};

namespace {

using FeatureMessage = SimulatedStatusService::FeatureMessage;

// The result and the arguments of a described message are objects.
constexpr auto kObjects = [] {
  std::array<char, SimulatedStatusService::kMostArguments + 1> codes{};
  codes.fill('@');
  return codes;
}();
// The receiver and the selector come before a message's own arguments.
constexpr std::size_t kHidden = 2;

const Value& argument(const Invocation& invocation, std::size_t index) {
  return invocation.argumentAtIndex(index + kHidden);
}

constexpr std::array<FeatureMessage, 8> kFeatureMessages{{
    {"supportedFeatures", "@",
     [](const FeatureTable& features, const Invocation& /*call*/) {
       return features.supportedFeatures();
     }},
    {"isSupportedFeature:", "c@",
     [](const FeatureTable& features, const Invocation& call) {
       return Value::boolean(features.isSupportedFeature(argument(call, 0)));
     }},
    {"supportedPropertiesForFeature:", "@@",
     [](const FeatureTable& features, const Invocation& call) {
       return features.supportedPropertiesForFeature(argument(call, 0));
     }},
    {"isSupportedProperty:forFeature:", "c@@",
     [](const FeatureTable& features, const Invocation& call) {
       return Value::boolean(
           features.isSupportedProperty_forFeature(argument(call, 0), argument(call, 1)));
     }},
    {"identifiersForFeature:", "@@",
     [](const FeatureTable& features, const Invocation& call) {
       return features.identifiersForFeature(argument(call, 0));
     }},
    {"valueForFeature:", "@@",
     [](const FeatureTable& features, const Invocation& call) {
       return features.valueForFeature(argument(call, 0));
     }},
    {"valueForFeature:property:", "@@@",
     [](const FeatureTable& features, const Invocation& call) {
       return features.valueForFeature_property(argument(call, 0), argument(call, 1));
     }},
    {"valueForFeature:property:identifier:", "@@@@",
     [](const FeatureTable& features, const Invocation& call) {
       return features.valueForFeature_property_identifier(argument(call, 0), argument(call, 1),
                                                           argument(call, 2));
     }},
}};

const FeatureMessage* featureMessage(const Selector& selector) {
  static const auto selectors = [] {
    std::vector<Selector> made;
    made.reserve(kFeatureMessages.size());
    for (const FeatureMessage& message : kFeatureMessages) made.emplace_back(message.selector);
    return made;
  }();
  const auto found = std::ranges::find(selectors, selector);
  return found != selectors.end()
             ? &kFeatureMessages[static_cast<std::size_t>(found - selectors.begin())]
             : nullptr;
}

}  // namespace

constinit const Class SimulatedStatusService::kClass{.name = "VemoSimulatedStatusService",
                                                     .base = &Object::kClass};

Ref<SimulatedStatusService> SimulatedStatusService::create(const Dictionary& description,
                                                           const Protocol* protocol) {
  const Value& messages = description.objectForKey("Messages");
  std::optional<FeatureTable> features;
  if (auto* described = castTo<Dictionary>(description.objectForKey("Features"))) {
    features.emplace(Ref<Dictionary>(*described));
  }
  return make<SimulatedStatusService>(RefPtr<Dictionary>(castTo<Dictionary>(messages)),
                                      std::move(features), protocol);
}

bool SimulatedStatusService::respondsToSelector(const Selector& selector) const {
  return static_cast<bool>(methodSignatureForSelector(selector));
}

bool SimulatedStatusService::conformsToProtocol(const Protocol& protocol) const {
  return (protocol_ != nullptr && includesProtocol(*protocol_, protocol)) ||
         Object::conformsToProtocol(protocol);
}

const SimulatedStatusService::Answer& SimulatedStatusService::answerTo(
    const Selector& selector) const {
  const std::string& name = selector.name();
  // Names lie at multiples of 16, so the lowest bits tell nothing.
  const auto bits = reinterpret_cast<std::uintptr_t>(&name);
  Answer& answer = answers_[(bits >> 4U ^ bits >> 9U) % answers_.size()];
  if (answer.message == &name) return answer;
  answer = {&name};
  if (messages_) {
    const Value& described = messages_->objectForKey(name);
    if (!described.isNil()) answer.described = &described;
  }
  if (answer.described == nullptr && features_) answer.feature = featureMessage(selector);
  return answer;
}

MethodSignature SimulatedStatusService::methodSignatureForSelector(const Selector& selector) const {
  if (const MethodSignature own = Object::methodSignatureForSelector(selector)) return own;
  const Answer& answer = answerTo(selector);
  if (answer.described != nullptr) {
    return MethodSignature(std::string_view(kObjects.data(), selector.argumentCount() + 1));
  }
  return answer.feature != nullptr ? MethodSignature(answer.feature->types) : MethodSignature();
}

void SimulatedStatusService::forwardInvocation(Invocation& invocation) {
  const Answer& answer = answerTo(invocation.selector());
  if (answer.feature != nullptr) {
    invocation.setReturnValue(answer.feature->answer(*features_, invocation));
    return;
  }
  if (answer.described == nullptr) {
    Object::forwardInvocation(invocation);
    return;
  }
  const Value& described = *answer.described;
  if (invocation.selector().argumentCount() != 1) {
    invocation.setReturnValue(described);
    return;
  }
  const std::string text = descriptionOf(argument(invocation, 0));
  const auto* answers = castTo<Dictionary>(described);
  invocation.setReturnValue(answers != nullptr ? answers->objectForKey(text) : Value());
}

}  // namespace commandfilter
