#include "evaluation/ADMEvaluationContextBase.h"

#include <array>
#include <utility>

#include "evaluation/ADMMacrosEvaluationContext.h"
#include "evaluation/ProcedureGroups.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/Send.h"
#include "runtime/String.h"
#include "runtime/ValueVector.h"
#include "template/status/ADMFeaturePathSource.h"

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

[[noreturn]] void throwNoFeaturePaths() {
  throw Exception(
      "the status service: unrecognized selector "
      "valueForFeaturePathComponents:errorInfo:");
}

// Apart from what is asked for, which would make room for it whenever it is.
[[gnu::cold, gnu::noinline]] void failWithoutSelector(ADMEvaluationContext& context,
                                                      const EvaluationName& name) {
  context.setRuntimeError("No such selector:%@", name.string());
}

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
  if (auto* base = castTo<ADMEvaluationContextBase>(&parent.object())) shareConfigurationOf(*base);
}

ADMEvaluationContextBase::ADMEvaluationContextBase(CalledFrom /*unused*/,
                                                   ADMEvaluationContext& parent)
    : ADMEvaluationContextBase(parent.statusService(),
                               RefPtr<Dictionary>(const_cast<Dictionary*>(
                                   parent.globalConfiguration())),  // NOLINT: shared
                               parent) {}

ADMEvaluationContextBase::~ADMEvaluationContextBase() = default;

void ADMEvaluationContextBase::shareConfigurationOf(ADMEvaluationContextBase& other) {
  const Dictionary* configuration = globalConfiguration();
  if (configuration != nullptr && other.globalConfiguration() == configuration) {
    shared_ = RefPtr<SharedConfiguration>(other.sharedConfiguration());
  }
}

// Apart from what is there, which is asked for all the time.
[[gnu::noinline]] SharedConfiguration* ADMEvaluationContextBase::makeSharedConfiguration() {
  if (!globalConfiguration_) return nullptr;
  shared_ = SharedConfiguration::create(Ref<Dictionary>(*globalConfiguration_));
  return shared_.get();
}

ADMNamedValues* ADMEvaluationContextBase::constants() {
  const SharedConfiguration* shared = sharedConfiguration();
  return shared != nullptr ? shared->constants() : nullptr;
}

Object* ADMEvaluationContextBase::permanenceOfConstants() {
  const SharedConfiguration* shared = sharedConfiguration();
  return shared != nullptr ? shared->permanenceOfConstants() : nullptr;
}

ADMNamedValues* ADMEvaluationContextBase::templateValues() {
  const SharedConfiguration* shared = sharedConfiguration();
  return shared != nullptr ? shared->templateValues() : nullptr;
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

Value ADMEvaluationContextBase::sendToService(const Selector& selector, const Value& object) {
  if (!hasFoundSources_) findSources();
  if (messageSource_ != nullptr) {
    Value answer;
    if (messageSource_->answerMessage(selector, object, answer)) return answer;
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
  failWithoutSelector(*this, name);
  return {};
}

inline Value ADMEvaluationContextBase::valueForFeaturePath(const Array& components) {
  if (!hasFoundSources_) findSources();
  if (featurePathSource_ == nullptr) throwNoFeaturePaths();
  RefPtr<String> errorInfo;
  Value value = featurePathSource_->valueForFeaturePathComponents_errorInfo(components, errorInfo);
  if (errorInfo) [[unlikely]] {
    setRuntimeError(errorInfo->view());
    return {};
  }
  return value;
}

// Apart, because few paths have an "@".
[[gnu::noinline]] Value ADMEvaluationContextBase::valueForCurrentFeaturePath(
    const Array& components) {
  ValueVector replaced;
  replaced.reserve(components.count());
  for (const Value& component : components) {
    Value part = standsForCurrent(component) ? defaultServiceSymbolValue() : component;
    if (!part.isNil()) replaced.push_back(std::move(part));
  }
  return valueForFeaturePath(*Array::create(std::move(replaced)));
}

Value ADMEvaluationContextBase::valueForFeaturePathComponents(const Array* components) {
  if (components == nullptr || components->isEmpty() || statusService_.isNil()) return {};
  // What stands for the current thing is not known by itself, so it cannot be meant here.
  if (featurePathSource_ != nullptr) {
    const Value& known = featurePathSource_->knownValueForFeaturePathComponents(*components);
    if (!known.isNil()) return known.nullAsNil();
  }
  for (const Value& component : *components) {
    if (standsForCurrent(component)) return valueForCurrentFeaturePath(*components);
  }
  return valueForFeaturePath(*components);
}

void ADMEvaluationContextBase::findSources() {
  featurePathSource_ = castTo<ADMFeaturePathSource>(statusService_);
  messageSource_ = castTo<ADMMessageSource>(statusService_);
  hasFoundSources_ = true;
}

Value ADMEvaluationContextBase::executeProcedure_withArguments(const EvaluationName& name,
                                                               const Array* arguments) {
  const Method* procedure = name.methodOf(classInfo());
  if (procedure != nullptr && procedure->invokeWithObject != nullptr) [[likely]] {
    return procedure->invokeWithObject(*this, arguments);
  }
  return executeOtherProcedure(procedure, name, arguments);
}

// Apart from the usual procedures, which would make room for it whenever they are called.
[[gnu::noinline]] Value ADMEvaluationContextBase::executeOtherProcedure(const Method* procedure,
                                                                        const EvaluationName& name,
                                                                        const Array* arguments) {
  const CompiledMacro* macro = procedure == nullptr ? macroNamed(name) : nullptr;
  return macro != nullptr ? executeMacro(*macro, arguments)
                          : executeRareProcedure(procedure, name, arguments);
}

// Apart from macros for the same reason.
[[gnu::noinline]] Value ADMEvaluationContextBase::executeRareProcedure(const Method* procedure,
                                                                       const EvaluationName& name,
                                                                       const Array* arguments) {
  if (!name.string()) {
    setRuntimeError("Empty procedure name");
    return {};
  }
  if (procedure != nullptr) {
    const Value items = Value::sharing(arguments);
    return procedure->invoke(Value::sharing(this), std::span(&items, 1));
  }
  setRuntimeError("Can not find procedure %@", name.string());
  return {};
}

inline const CompiledMacro* ADMEvaluationContextBase::macroNamed(const EvaluationName& name) {
  SharedConfiguration* shared = name.string() ? sharedConfiguration() : nullptr;
  return shared != nullptr ? shared->macroNamed(name) : nullptr;
}

inline Value ADMEvaluationContextBase::executeMacro(const CompiledMacro& macro,
                                                    const Array* arguments) {
  const Ref<ADMMacrosEvaluationContext> context =
      ADMMacrosEvaluationContext::contextWithArguments_calledFrom(arguments, *this);
  if (macro.error) context->setLastError(macro.error);
  return macro.processor->executeWithContext(*context);
}

RefPtr<ADMEvaluationProcessor> ADMEvaluationContextBase::compiledMacro(const EvaluationName& name) {
  const CompiledMacro* macro = macroNamed(name);
  return macro != nullptr ? RefPtr<ADMEvaluationProcessor>(macro->processor) : nullptr;
}

}  // namespace commandfilter
