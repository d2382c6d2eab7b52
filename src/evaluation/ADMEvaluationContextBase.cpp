#include "evaluation/ADMEvaluationContextBase.h"

#include <array>
#include <utility>
#include <vector>

#include "evaluation/ADMMacrosEvaluationContext.h"
#include "evaluation/ProcedureGroups.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"
#include "runtime/String.h"
#include "template/status/ADMFeaturePathSource.h"
#include "template/status/ADMMessageSource.h"

namespace commandfilter {

namespace {

constexpr auto kContextProtocols = conformances<ADMEvaluationContextBase, ADMEvaluationContext>();
constexpr std::array kContextInitializers{
    initializer<&ADMEvaluationContextBase::initWithStatusService_globalConfiguration>(
        "initWithStatusService:globalConfiguration:"),
};
constexpr std::array<const MethodGroup*, 9> kGroups{
    &kAggregateProcedure, &kCallMethodProcedure,       &kCollectionsProcedures,
    &kExternalProcedures, &kInputParametersProcedures, &kServiceManipulationProcedures,
    &kSetProcedures,      &kTemplateProcedures,        &kStringProcedures,
};

[[gnu::always_inline]] inline bool standsForCurrent(const Value& component) {
  const auto* text = castTo<String>(component);
  // Nearly all components are longer, which is told at once.
  return text != nullptr && text->view().size() <= 1 && (text->isEmpty() || text->view() == "@");
}

}  // namespace

constinit const Class ADMEvaluationContextBase::kClass{.name = "ADMEvaluationContextBase",
                                                       .base = &Object::kClass,
                                                       .protocols = kContextProtocols,
                                                       .groups = kGroups,
                                                       .initializers = kContextInitializers};

std::span<const MethodGroup* const> procedureGroups() noexcept { return kGroups; }

Ref<ADMEvaluationContextBase> ADMEvaluationContextBase::initWithStatusService_globalConfiguration(
    Value statusService, RefPtr<Dictionary> globalConfiguration) {
  return make<ADMEvaluationContextBase>(std::move(statusService), std::move(globalConfiguration));
}

ADMEvaluationContextBase::ADMEvaluationContextBase(Value statusService,
                                                   RefPtr<Dictionary> globalConfiguration)
    : statusService_(std::move(statusService)),
      globalConfiguration_(std::move(globalConfiguration)) {}

ADMEvaluationContextBase::ADMEvaluationContextBase(Value statusService,
                                                   RefPtr<Dictionary> globalConfiguration,
                                                   ADMEvaluationContext& parent)
    : ADMEvaluationContextBase(std::move(statusService), std::move(globalConfiguration)) {
  if (auto* base = castTo<ADMEvaluationContextBase>(&parent.object())) {
    shareCompiledMacrosOf(*base);
  }
}

ADMEvaluationContextBase::~ADMEvaluationContextBase() = default;

void ADMEvaluationContextBase::shareCompiledMacrosOf(ADMEvaluationContextBase& other) {
  CompiledMacros* macros = other.compiledMacros();
  if (macros != nullptr && &macros->configuration() == globalConfiguration_.get()) {
    macros_ = RefPtr<CompiledMacros>(macros);
  }
}

void ADMEvaluationContextBase::resetEvaluations() {
  if (commonCache_) commonCache_->removeAllObjects();
}

MutableDictionary& ADMEvaluationContextBase::commonCache() {
  if (!commonCache_) commonCache_ = MutableDictionary::create();
  return *commonCache_;
}

void ADMEvaluationContextBase::setLastError(RefPtr<ADMEvaluationError> error) {
  lastError_ = std::move(error);
}

void ADMEvaluationContextBase::setRuntimeErrorWithArguments(
    std::string_view format, std::span<const FormatArgument> arguments) {
  if (format.data() == nullptr) format = "Unknown error";
  setLastError(ADMEvaluationError::errorWithCategory_descriptionFormat_arguments(
      ErrorCategory::Runtime, format, arguments));
}

Value ADMEvaluationContextBase::serviceSymbolForNameImpl(const EvaluationName& name) {
  switch (name.symbol()) {
    case EvaluationSymbol::Nil:
      return Value::null();
    case EvaluationSymbol::Service:
      return statusService_.orNull();
    case EvaluationSymbol::True:
      return Value::boolean(true);
    case EvaluationSymbol::False:
      return Value::boolean(false);
    default:
      return {};
  }
}

Value ADMEvaluationContextBase::processSelectorImpl(const Selector& /*selector*/) { return {}; }

Value ADMEvaluationContextBase::askService(const Selector& selector, const Value& object) const {
  if (auto* source = castTo<ADMMessageSource>(statusService_)) {
    Value answer;
    if (source->answerMessage(selector, object, answer)) return answer;
  }
  if (!commandfilter::respondsToSelector(statusService_, selector)) return {};
  return performSelector(statusService_, selector, object);
}

Value ADMEvaluationContextBase::defaultServiceSymbolValue() { return {}; }

Value ADMEvaluationContextBase::processSelector(const EvaluationName& name) {
  if (!name.string()) return {};
  Value symbol = serviceSymbolForNameImpl(name);
  if (symbol.isNull()) return {};
  if (!symbol.isNil()) return symbol;
  if (name.selector()) return processSelectorImpl(*name.selector());
  setRuntimeError("No such selector:%@", name.string());
  return {};
}

Value ADMEvaluationContextBase::valueForFeaturePathComponents(const Array* components) {
  if (components == nullptr || components->isEmpty() || statusService_.isNil()) return {};
  for (const Value& component : *components) {
    if (standsForCurrent(component)) return valueForFeaturePath(*withCurrent(*components));
  }
  return valueForFeaturePath(*components);
}

Value ADMEvaluationContextBase::valueForFeaturePath(const Array& components) {
  if (featurePathSource_ == nullptr) findFeaturePathSource();
  RefPtr<String> errorInfo;
  Value value = featurePathSource_->valueForFeaturePathComponents_errorInfo(components, errorInfo);
  if (!errorInfo) return value;
  setRuntimeError(errorInfo->view());
  return {};
}

Ref<Array> ADMEvaluationContextBase::withCurrent(const Array& components) {
  std::vector<Value> replaced;
  replaced.reserve(components.count());
  for (const Value& component : components) {
    Value part = standsForCurrent(component) ? defaultServiceSymbolValue() : component;
    if (!part.isNil()) replaced.push_back(std::move(part));
  }
  return Array::create(std::move(replaced));
}

void ADMEvaluationContextBase::findFeaturePathSource() {
  featurePathSource_ = castTo<ADMFeaturePathSource>(statusService_);
  if (featurePathSource_ != nullptr) return;
  throw Exception(
      "the status service: unrecognized selector "
      "valueForFeaturePathComponents:errorInfo:");
}

Value ADMEvaluationContextBase::executeProcedure_withArguments(const EvaluationName& name,
                                                               const Array* arguments) {
  if (!name.string()) {
    setRuntimeError("Empty procedure name");
    return {};
  }
  if (name.selector()) {
    if (const Method* procedure = classInfo().instanceMethod(*name.selector())) {
      const Value items = Value::sharing(arguments);
      return procedure->invoke(Value::sharing(this), std::span(&items, 1));
    }
  }
  CompiledMacros* macros = compiledMacros();
  if (const CompiledMacro* macro = macros != nullptr ? macros->macroNamed(name) : nullptr) {
    return executeMacro(*macro, arguments);
  }
  setRuntimeError("Can not find procedure %@", name.string());
  return {};
}

CompiledMacros* ADMEvaluationContextBase::compiledMacros() {
  if (!macros_ && globalConfiguration_) macros_ = CompiledMacros::create(*globalConfiguration_);
  return macros_.get();
}

RefPtr<ADMEvaluationProcessor> ADMEvaluationContextBase::compiledMacro(const EvaluationName& name) {
  CompiledMacros* macros = compiledMacros();
  const CompiledMacro* macro = macros != nullptr ? macros->macroNamed(name) : nullptr;
  return macro != nullptr ? RefPtr<ADMEvaluationProcessor>(macro->processor) : nullptr;
}

Value ADMEvaluationContextBase::executeMacro(const CompiledMacro& macro, const Array* arguments) {
  const Ref<ADMMacrosEvaluationContext> context =
      ADMMacrosEvaluationContext::contextWithArguments_parentContext(
          arguments, Ref<ADMEvaluationContext>(*this));
  if (macro.error) context->setLastError(macro.error);
  if (macro.processor->rootItem() == nullptr) return {};
  return macro.processor->executeWithContext(*context);
}

}  // namespace commandfilter
