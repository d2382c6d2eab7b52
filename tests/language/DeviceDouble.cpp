#include "language/DeviceDouble.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "language/CaseText.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "runtime/ValueVector.h"

namespace commandfilter::testing {

namespace {

constexpr auto kDeviceProtocols = conformances<DeviceDouble, ADMFeaturePathSource>();
constexpr std::size_t kHidden = 2;

bool asksForFeature(const Selector& selector) {
  const std::string& name = selector.name();
  return name == "valueForFeature:" || name == "valueForFeature:property:" ||
         name == "valueForFeature:property:identifier:";
}

Value answer(const Notation& fact) {
  if (fact.kind == Notation::Kind::Raises) throw Exception(withoutEscapes(fact.text));
  return fact.value();
}

}  // namespace

constinit const Class DeviceDouble::kClass{
    .name = "DeviceDouble", .base = &Object::kClass, .protocols = kDeviceProtocols};

bool DeviceDouble::respondsToSelector(const Selector& selector) const {
  return facts_.messages.contains(selector.name()) ||
         (!facts_.features.empty() && asksForFeature(selector));
}

MethodSignature DeviceDouble::methodSignatureForSelector(const Selector& selector) const {
  if (!respondsToSelector(selector)) return {};
  // The result and each argument are objects.
  constexpr std::string_view kObjects = "@@@@@@@@";
  return MethodSignature(kObjects.substr(0, selector.argumentCount() + 1));
}

void DeviceDouble::forwardInvocation(Invocation& invocation) {
  const std::string& name = invocation.selector().name();
  if (!facts_.messages.contains(name)) {
    ValueVector components;
    for (std::size_t i = kHidden; i < invocation.methodSignature().numberOfArguments(); ++i) {
      components.push_back(invocation.argumentAtIndex(i));
    }
    RefPtr<String> errorInfo;
    invocation.setReturnValue(
        valueForFeaturePathComponents_errorInfo(*Array::create(std::move(components)), errorInfo));
    return;
  }
  std::string call = "@" + name;
  const std::size_t count = invocation.methodSignature().numberOfArguments() - kHidden;
  for (std::size_t i = 0; i < count; ++i) {
    call.append(i == 0 ? " " : " and ");
    call.append(notationOf(invocation.argumentAtIndex(i + kHidden)));
  }
  log_.push_back(std::move(call));
  Value result = answer(facts_.messages.at(name));
  if (count == 1) {
    const auto* answers = castTo<Dictionary>(result);
    const std::string argument = descriptionOf(invocation.argumentAtIndex(kHidden));
    result = answers != nullptr ? answers->objectForKey(argument) : Value();
  }
  invocation.setReturnValue(std::move(result));
}

Value DeviceDouble::valueForFeaturePathComponents_errorInfo(const Array& components,
                                                            RefPtr<String>& errorInfo) {
  const Value path = Value::sharing(&components);
  log_.push_back(notationOf(path));
  const auto found = std::ranges::find_if(
      facts_.features, [&path](const auto& feature) { return feature.first.matches(path); });
  if (found == facts_.features.end()) return {};
  const Notation& fact = found->second;
  if (fact.kind != Notation::Kind::Fails) return answer(fact);
  errorInfo = String::create(withoutEscapes(fact.text));
  // Whoever asks gives nil, whatever comes with the error.
  return String::create("what comes with an error");
}

}  // namespace commandfilter::testing
