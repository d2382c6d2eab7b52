#include "template/ADMStatusValueRepresentation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Comparison.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"
#include "runtime/StackGuard.h"
#include "template/status/ADMStatusServiceProxy.h"

namespace commandfilter {

constinit const Protocol ADMRepresentationProcessor::kProtocol{"ADMRepresentationProcessor"};

namespace {

constexpr auto kProtocols =
    conformances<ADMStatusValueRepresentation, ADMRepresentationProcessor>();
constexpr std::array kMethods{
    method<&ADMStatusValueRepresentation::representationData>("representationData"),
    method<&ADMStatusValueRepresentation::resetEvaluations>("resetEvaluations"),
    method<&ADMStatusValueRepresentation::lastError>("lastError"),
    method<&ADMStatusValueRepresentation::calculateValue>("calculateValue:"),
    method<&ADMStatusValueRepresentation::processorForExpression>("processorForExpression:"),
};
constexpr std::array kInitializers{
    initializer<&ADMStatusValueRepresentation::
                    initWithRepresentationInfo_statusServiceCreator_globalConfiguration>(
        "initWithRepresentationInfo:statusServiceCreator:globalConfiguration:"),
};

// The text under the key; empty when there is none.
std::string_view textAt(const Dictionary& info, std::string_view key) {
  const Value& found = info.objectForKey(key);
  if (found.isNil()) return {};
  const auto* text = castTo<String>(found);
  if (text == nullptr) throw Exception("\"" + std::string(key) + "\" of a value is no text");
  return text->view();
}

// What the expressions read; nil for a value that names no service.
Value serviceOf(const Dictionary& info, ADMStatusServiceCreator* serviceCreator) {
  const auto* name = castTo<String>(info.objectForKey("ServiceName"));
  return ADMStatusServiceProxy::proxyForServiceCreator_serviceName(serviceCreator, name);
}

// A context of the named class, or of the one that suits the value when there is none of the name.
RefPtr<ADMEvaluationContext> contextOf(const Dictionary& info, Value service,
                                       RefPtr<Dictionary> globalConfiguration) {
  const std::string_view name = textAt(info, "EvaluationContext");
  const Class* named = name.empty() ? nullptr : classNamed(name);
  const bool isList = !textAt(info, "Range").empty();
  if (named == nullptr && isList) {
    return ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList(
        std::move(service), std::move(globalConfiguration), Value());
  }
  if (named == nullptr) {
    return ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(
        std::move(service), std::move(globalConfiguration));
  }
  const Value made =
      isList
          ? instantiate(*named, Selector("initWithStatusService:globalConfiguration:elementsList:"),
                        {service, globalConfiguration, Value()})
          : instantiate(*named, Selector("initWithStatusService:globalConfiguration:"),
                        {service, globalConfiguration});
  return RefPtr<ADMEvaluationContext>(castTo<ADMEvaluationContext>(made));
}

// The text alone means it; a boolean does not.
bool forbidsEmptyArray(const Dictionary& info) {
  return textOf(castTo<String>(info.objectForKey("AcceptsEmptyArray"))) == "NO";
}

}  // namespace

constinit const Class ADMStatusValueRepresentation::kClass{.name = "ADMStatusValueRepresentation",
                                                           .base = &Object::kClass,
                                                           .protocols = kProtocols,
                                                           .methods = kMethods,
                                                           .initializers = kInitializers};

ADMStatusValueRepresentation::ADMStatusValueRepresentation(const Dictionary& info,
                                                           Ref<ADMEvaluationContext> context)
    : context_(std::move(context)),
      iteration_(castTo<ADMArrayIteration>(&context_->object())),
      valueInfo_(info.objectForKey("Value")),
      filterExpression_(info.objectForKey("Filter")),
      rangeExpression_(info.objectForKey("Range")),
      doNotReturnEmptyArray_(forbidsEmptyArray(info)),
      evaluationProcessorsCache_(MutableDictionary::create()) {}

RefPtr<ADMStatusValueRepresentation>
ADMStatusValueRepresentation::initWithRepresentationInfo_statusServiceCreator_globalConfiguration(
    const Dictionary* info, ADMStatusServiceCreator* serviceCreator,
    RefPtr<Dictionary> globalConfiguration) {
  if (info == nullptr || info->objectForKey("Value").isNil()) return nullptr;
  const RefPtr<ADMEvaluationContext> context =
      contextOf(*info, serviceOf(*info, serviceCreator), std::move(globalConfiguration));
  if (!context) return nullptr;
  return make<ADMStatusValueRepresentation>(*info, Ref<ADMEvaluationContext>(*context));
}

Value ADMStatusValueRepresentation::representationData() {
  // The context decides, not the description: one of a plug-in may iterate on its own account.
  if (iteration_ != nullptr) return calculateList(*iteration_);
  return passesFilter() ? calculateValue(valueInfo_) : Value();
}

Value ADMStatusValueRepresentation::calculateList(ADMArrayIteration& iteration) {
  const Value range = calculateValue(rangeExpression_);
  if (range.isNil()) return {};
  std::vector<Value> values;
  // Most lists are short and complete; a filter may leave little of a long one.
  constexpr std::size_t kShort = 16;
  const auto* elements = castTo<Array>(range);
  values.reserve(elements != nullptr ? std::min(elements->count(), kShort) : 0);
  for (iteration.resetIteration(range); !iteration.endOfIteration(); iteration.iterateNext()) {
    if (!passesFilter()) continue;
    Value value = calculateValue(valueInfo_);
    if (!value.isNil()) values.push_back(std::move(value));
  }
  if (values.empty() && doNotReturnEmptyArray_) return {};
  return Array::create(std::move(values));
}

bool ADMStatusValueRepresentation::passesFilter() {
  // Only a number that is zero keeps a value out; a filter that is nil or fails lets it in.
  return filterExpression_.isNil() ||
         !equal(calculateValue(filterExpression_), Value::boolean(false));
}

Value ADMStatusValueRepresentation::calculateValue(const Value& valueInfo) {
  if (const auto* expression = castTo<String>(valueInfo)) {
    const ADMEvaluationProcessor* processor = compiled(*expression);
    return processor != nullptr ? processor->execute() : Value();
  }
  const auto* dictionary = castTo<Dictionary>(valueInfo);
  return dictionary != nullptr ? calculateDictionary(*dictionary) : Value();
}

Value ADMStatusValueRepresentation::calculateDictionary(const Dictionary& valueInfo) {
  StackGuard::check();
  DictionaryBuilder values;
  values.reserve(valueInfo.count());
  for (const DictionaryEntry& entry : valueInfo) {
    Value value = calculateValue(entry.value);
    if (!value.isNil()) values.add(entry, std::move(value));
  }
  return values.count() != 0 ? Value(values.build()) : Value();
}

RefPtr<ADMEvaluationProcessor> ADMStatusValueRepresentation::processorForExpression(
    const String* expression) {
  return RefPtr<ADMEvaluationProcessor>(expression != nullptr ? compiled(*expression) : nullptr);
}

ADMEvaluationProcessor* ADMStatusValueRepresentation::findCompiled(const String& expression) {
  if (expression.isEmpty()) return nullptr;
  const Value key = Value::sharing(&expression);
  if (auto* known = evaluationProcessorsCache_->objectForKey(key).object()) {
    return static_cast<ADMEvaluationProcessor*>(known);
  }
  const Ref<ADMEvaluationProcessor> made =
      ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
          Ref<String>(*castTo<String>(key)), context_);
  evaluationProcessorsCache_->setObject_forKey(made, key);
  placeOf(expression) = {&expression, made.get()};
  return made.get();
}

}  // namespace commandfilter
