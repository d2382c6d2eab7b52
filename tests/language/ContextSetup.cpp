#include "language/ContextSetup.h"

#include "evaluation/ADMAggregateEvaluationContext.h"
#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ADMMacrosEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/ADMEvaluationProcessor.h"
#include "language/CreatorDouble.h"
#include "language/ExternalDoubles.h"
#include "language/ProbingContext.h"
#include "language/TemplateDoubles.h"
#include "runtime/Array.h"
#include "runtime/Dictionary.h"
#include "runtime/String.h"
#include "template/status/ADMStatusServiceProxy.h"

namespace commandfilter::testing {

namespace {

using Kind = ContextSetup::Kind;

Ref<Dictionary> dictionaryOf(const ContextSetup::Names& names) {
  DictionaryBuilder builder;
  for (const auto& [name, value] : names) builder.set(name, value.value());
  return builder.build();
}

RefPtr<Dictionary> configurationOf(const Setups& setups, const ContextSetup& setup, CallLog& log) {
  DictionaryBuilder builder;
  if (!setup.constants.empty()) {
    builder.set("TemplateConstants", ConstantsDouble::create(dictionaryOf(setup.constants), log));
  }
  if (!setup.values.empty()) {
    builder.set("EntireTemplateProcessor", TemplateDouble::create(dictionaryOf(setup.values), log));
  }
  if (!setup.macros.empty()) builder.set("TemplateMacroses", dictionaryOf(setup.macros));
  if (!setup.input.empty()) builder.set("InputParameters", dictionaryOf(setup.input));
  if (!setup.services.empty()) {
    CreatorDouble::Services services;
    for (const auto& [name, device] : setup.services) {
      services.emplace(name, &setups.devices.at(device));
    }
    builder.set("ServiceCreator", CreatorDouble::create(std::move(services), log));
  }
  if (builder.count() == 0) return nullptr;
  return builder.build();
}

Value serviceOf(const Setups& setups, const ContextSetup& setup, const Dictionary* configuration,
                CallLog& log) {
  if (setup.service) {
    constexpr std::string_view kProxy = "proxy ";
    const Notation& service = *setup.service;
    if (service.kind != Notation::Kind::Object || !service.text.starts_with(kProxy)) {
      return service.value();
    }
    if (configuration == nullptr) return {};
    return ADMStatusServiceProxy::proxyForServiceCreator_serviceName(
        castTo<ADMStatusServiceCreator>(configuration->objectForKey("ServiceCreator")),
        String::create(service.text.substr(kProxy.size())).get());
  }
  if (setup.device.empty()) return {};
  return DeviceDouble::create(setups.devices.at(setup.device), log);
}

Ref<Array> compiledArguments(const ContextSetup& setup, const Ref<ADMEvaluationContext>& context) {
  ValueVector items;
  for (const std::string& expression : setup.arguments) {
    const auto processor = ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
        String::create(expression), context);
    items.push_back(Value::sharing(processor->rootItem()));
  }
  return Array::create(std::move(items));
}

PreparedContext preparedIteration(const Ref<ADMArrayEvaluationContext>& context,
                                  RefPtr<ADMEvaluationContext> parent, std::size_t at) {
  for (std::size_t i = 0; i < at; ++i) context->iterateNext();
  return {context, std::move(parent), context.get()};
}

}  // namespace

PreparedContext prepareContext(const Setups& setups, const ContextSetup& setup, CallLog& log) {
  registerExternalDoubles();
  RefPtr<Dictionary> configuration = configurationOf(setups, setup, log);
  const Value service = serviceOf(setups, setup, configuration.get(), log);
  switch (setup.kind) {
    case Kind::Base:
      return {ProbingContext<ADMEvaluationContextBase>::create(log, service, configuration),
              nullptr, nullptr};
    case Kind::Single:
      return {ProbingContext<ADMSingleValueEvaluationContext>::create(log, service, configuration),
              nullptr, nullptr};
    case Kind::Array:
    case Kind::Walk:
      return preparedIteration(ProbingContext<ADMArrayEvaluationContext>::create(
                                   log, service, configuration, setup.list.value()),
                               nullptr, setup.at);
    case Kind::Aggregate: {
      const PreparedContext parent = prepareContext(setups, setups.contexts.at(setup.parent), log);
      if (!configuration) {
        configuration = RefPtr<Dictionary>(
            const_cast<Dictionary*>(parent.context->globalConfiguration()));  // NOLINT: shared
      }
      return preparedIteration(
          ADMAggregateEvaluationContext::
              initWithParentContext_globalConfiguration_elementsList_initialValue(
                  parent.context, configuration, setup.list.value(), setup.initial.value()),
          parent.context, setup.at);
    }
    case Kind::Macro:
      break;
  }
  const PreparedContext parent = prepareContext(setups, setups.contexts.at(setup.parent), log);
  const Ref<Array> arguments = compiledArguments(setup, parent.context);
  return {ADMMacrosEvaluationContext::contextWithArguments_parentContext(arguments.get(),
                                                                         parent.context),
          parent.context, nullptr};
}

}  // namespace commandfilter::testing
