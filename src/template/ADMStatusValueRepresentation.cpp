#include "template/ADMStatusValueRepresentation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Comparison.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"
#include "runtime/StackGuard.h"
#include "runtime/TextEquality.h"
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

// The text of an entry; empty when there is none.
std::string_view textIn(const Value& entry, std::string_view key) {
  if (entry.isNil()) return {};
  const auto* text = castTo<String>(entry);
  if (text == nullptr) throw Exception("\"" + std::string(key) + "\" of a value is no text");
  return text->view();
}

}  // namespace

// What a value's description says, nil for what it does not.
struct ADMStatusValueRepresentation::Description {
  explicit Description(const Dictionary& info);

  [[nodiscard]] bool isList() const { return !textIn(range, "Range").empty(); }
  // The text alone means it; a boolean does not.
  [[nodiscard]] bool forbidsEmptyArray() const {
    return textOf(castTo<String>(acceptsEmptyArray)) == "NO";
  }
  // What the expressions read; nil for a value that names no service.
  [[nodiscard]] Value service(ADMStatusServiceCreator* creator) const {
    return ADMStatusServiceProxy::proxyForServiceCreator_serviceName(creator,
                                                                     castTo<String>(serviceName));
  }

  Value value;
  Value filter;
  Value range;
  Value serviceName;
  Value evaluationContext;
  Value acceptsEmptyArray;
};

namespace {

using Description = ADMStatusValueRepresentation::Description;

struct Part {
  std::string_view key;
  Value Description::*value;
};
constexpr std::array kParts{
    Part{"Value", &Description::value},
    Part{"Filter", &Description::filter},
    Part{"Range", &Description::range},
    Part{"ServiceName", &Description::serviceName},
    Part{"EvaluationContext", &Description::evaluationContext},
    Part{"AcceptsEmptyArray", &Description::acceptsEmptyArray},
};

// A context of the named class, or of the one that suits the value when there is none of the name.
RefPtr<ADMEvaluationContext> contextOf(const Description& description, Value service,
                                       RefPtr<Dictionary> globalConfiguration) {
  const std::string_view name = textIn(description.evaluationContext, "EvaluationContext");
  const Class* named = name.empty() ? nullptr : classNamed(name);
  const bool isList = description.isList();
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

}  // namespace

constinit const Class ADMStatusValueRepresentation::kClass{.name = "ADMStatusValueRepresentation",
                                                           .base = &Object::kClass,
                                                           .protocols = kProtocols,
                                                           .methods = kMethods,
                                                           .initializers = kInitializers};

// In one pass: a description has few entries, and most parts are in few descriptions.
ADMStatusValueRepresentation::Description::Description(const Dictionary& info) {
  for (const DictionaryEntry& entry : info) {
    const auto* key = castTo<String>(entry.key);
    if (key == nullptr) continue;
    for (const Part& part : kParts) {
      if (!sameText(key->view(), part.key)) continue;
      this->*part.value = entry.value;
      break;
    }
  }
}

ADMStatusValueRepresentation::ADMStatusValueRepresentation(Description description,
                                                           Ref<ADMEvaluationContext> context)
    : context_(std::move(context)),
      iteration_(castTo<ADMArrayIteration>(&context_->object())),
      valueInfo_(std::move(description.value)),
      filterExpression_(std::move(description.filter)),
      rangeExpression_(std::move(description.range)),
      doNotReturnEmptyArray_(description.forbidsEmptyArray()) {}

RefPtr<ADMStatusValueRepresentation>
ADMStatusValueRepresentation::initWithRepresentationInfo_statusServiceCreator_globalConfiguration(
    const Dictionary* info, ADMStatusServiceCreator* serviceCreator,
    RefPtr<Dictionary> globalConfiguration) {
  if (info == nullptr) return nullptr;
  Description description(*info);
  if (description.value.isNil()) return nullptr;
  const RefPtr<ADMEvaluationContext> context =
      contextOf(description, description.service(serviceCreator), std::move(globalConfiguration));
  if (!context) return nullptr;
  return make<ADMStatusValueRepresentation>(std::move(description),
                                            Ref<ADMEvaluationContext>(*context));
}

Value ADMStatusValueRepresentation::representationData() {
  // The context decides, not the description: one of a plug-in may iterate on its own account.
  if (iteration_ != nullptr) return calculateList(*iteration_);
  return passesFilter() ? calculateValue(valueInfo_) : Value();
}

Value ADMStatusValueRepresentation::calculateList(ADMArrayIteration& iteration) {
  const Value range = calculateValue(rangeExpression_);
  if (range.isNil()) return {};
  ValueVector values;
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
  if (auto* known = evaluationProcessorsCache_.objectForKey(key).object()) {
    return static_cast<ADMEvaluationProcessor*>(known);
  }
  const std::size_t before = evaluationProcessorsCache_.count();
  const Ref<ADMEvaluationProcessor> made =
      ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
          Ref<String>(*castTo<String>(key)), context_);
  // A plug-in's context that is told of an error may have the same compiled meanwhile. What was
  // made first stays: it is known by its address.
  if (evaluationProcessorsCache_.count() != before) {
    const Value& known = evaluationProcessorsCache_.objectForKey(key);
    if (!known.isNil()) return static_cast<ADMEvaluationProcessor*>(known.object());
  }
  evaluationProcessorsCache_.add(key, made);
  return made.get();
}

}  // namespace commandfilter
