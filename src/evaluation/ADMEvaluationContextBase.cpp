#include "evaluation/ADMEvaluationContextBase.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "evaluation/ADMMacrosEvaluationContext.h"
#include "evaluation/ProcedureGroups.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/String.h"
#include "template/status/ADMFeaturePathSource.h"

namespace commandfilter {

namespace {

constexpr auto kContextProtocols = conformances<ADMEvaluationContextBase, ADMEvaluationContext>();
constexpr std::array kContextInitializers{
    initializer<&ADMEvaluationContextBase::initWithStatusService_globalConfiguration>(
        "initWithStatusService:globalConfiguration:"),
};
constexpr std::array<const MethodGroup*, 3> kGroups{
    &kAggregateProcedure,
    &kCollectionsProcedures,
    &kSetProcedures,
};

// The built-in names, found once.
struct SymbolNames {
  Selector nil{"nil"};
  Selector service{"service"};
  Selector yes{"true"};
  Selector no{"false"};
};

const SymbolNames& symbolNames() {
  static const SymbolNames names;
  return names;
}

bool standsForCurrent(const Value& component) {
  const auto* text = castTo<String>(component);
  return text != nullptr && (text->isEmpty() || text->view() == "@");
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
    if (!base->macros_) base->macros_ = CompiledMacros::create();
    macros_ = base->macros_;
  }
}

ADMEvaluationContextBase::~ADMEvaluationContextBase() = default;

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

void ADMEvaluationContextBase::clearErrors() { lastError_ = nullptr; }

void ADMEvaluationContextBase::setRuntimeErrorWithArguments(
    std::string_view format, std::span<const FormatArgument> arguments) {
  if (format.data() == nullptr) format = "Unknown error";
  setLastError(ADMEvaluationError::errorWithCategory_descriptionFormat_arguments(
      ErrorCategory::Runtime, format, arguments));
}

Value ADMEvaluationContextBase::serviceSymbolForNameImpl(const EvaluationName& name) {
  if (!name.selector()) return {};
  const SymbolNames& symbols = symbolNames();
  const Selector& selector = *name.selector();
  if (selector == symbols.nil) return Value::null();
  if (selector == symbols.service) return statusService_.orNull();
  if (selector == symbols.yes) return Value::boolean(true);
  if (selector == symbols.no) return Value::boolean(false);
  return {};
}

Value ADMEvaluationContextBase::processSelectorImpl(const Selector& /*selector*/) { return {}; }

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
  if (components == nullptr || components->isEmpty()) return {};
  if (statusService_.isNil()) return {};
  RefPtr<Array> path(const_cast<Array*>(components));  // NOLINT: shared, not changed
  if (std::ranges::any_of(*components, standsForCurrent)) {
    std::vector<Value> replaced;
    replaced.reserve(components->count());
    for (const Value& component : *components) {
      Value part = standsForCurrent(component) ? defaultServiceSymbolValue() : component;
      if (!part.isNil()) replaced.push_back(std::move(part));
    }
    path = Array::create(std::move(replaced));
  }
  auto* source = castTo<ADMFeaturePathSource>(statusService_);
  if (source == nullptr) {
    throw Exception(
        "the status service: unrecognized selector "
        "valueForFeaturePathComponents:errorInfo:");
  }
  RefPtr<String> errorInfo;
  Value value = source->valueForFeaturePathComponents_errorInfo(*path, errorInfo);
  if (!errorInfo) return value;
  setRuntimeError(errorInfo->view());
  return {};
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
  if (globalConfiguration_) {
    const auto* macros = castTo<Dictionary>(globalConfiguration_->objectForKey("TemplateMacroses"));
    const Value macro = macros != nullptr ? macros->objectForKey(Value(name.string())) : Value();
    if (!macro.isNil()) {
      const auto* expression = castTo<String>(macro);
      if (expression == nullptr) throw Exception("a macro is no text: " + name.string()->text());
      return executeMacro(*expression, arguments);
    }
  }
  setRuntimeError("Can not find procedure %@", name.string());
  return {};
}

Value ADMEvaluationContextBase::executeMacro(const String& expression, const Array* arguments) {
  const Ref<ADMMacrosEvaluationContext> context =
      ADMMacrosEvaluationContext::contextWithArguments_parentContext(
          arguments, Ref<ADMEvaluationContext>(*this));
  if (!macros_) macros_ = CompiledMacros::create();
  const CompiledMacro& macro = macros_->macroForExpression(expression);
  if (macro.error) context->setLastError(macro.error);
  if (macro.processor->rootItem() == nullptr) return {};
  return macro.processor->executeWithContext(*context);
}

}  // namespace commandfilter
