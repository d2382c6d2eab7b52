// The procedures that choose a status service.
#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include "evaluation/ProcedureArguments.h"
#include "evaluation/ProcedureGroups.h"
#include "evaluation/ProcedureSignatures.h"
#include "evaluation/ValuesByName.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/String.h"
#include "runtime/ValueVector.h"
#include "template/status/ADMFeaturePathSource.h"
#include "template/status/ADMStatusServiceCreator.h"
#include "template/status/ADMStatusServiceProxy.h"

namespace commandfilter {

namespace {

/// _ServiceValue(service, component, ...): a feature path of a service.
Value serviceValue(ADMEvaluationContextBase& context, const Array* items) {
  if (!argumentsOf("ServiceValue").accepts(countOf(items))) {
    return failWith(context, "Incorrect number of arguments in _ServiceValue");
  }
  Value service = evaluateArgument(items, 0, context);
  if (service.isNil()) service = context.statusService();
  if (service.isNil()) return {};
  ValueVector components;
  components.reserve(items->count() - 1);
  for (std::size_t i = 1; i < items->count(); ++i) {
    Value component = evaluateArgument(items, i, context);
    if (component.isNil()) break;
    components.push_back(std::move(component));
  }
  auto* source = castTo<ADMFeaturePathSource>(service);
  if (source == nullptr) {
    throw Exception(std::string(classOf(service)->name) +
                    ": unrecognized selector valueForFeaturePathComponents:errorInfo:");
  }
  RefPtr<String> errorInfo;
  Value value = source->valueForFeaturePathComponents_errorInfo(
      *Array::create(std::move(components)), errorInfo);
  return errorInfo ? failWith(context, errorInfo->view()) : value;
}

/// _Service([name]): the service of that name, or the context's own.
Value service(ADMEvaluationContextBase& context, const Array* items) {
  if (countOf(items) == 0) return context.statusService();
  if (!argumentsOf("Service").accepts(countOf(items)))
    return failWith(context, "Incorrect number of arguments in _Service");
  const Value value = evaluateArgument(items, 0, context);
  if (value.isNil() || value.isNull()) return context.statusService();
  const auto* name = castTo<String>(value);
  if (name == nullptr || name->isEmpty()) {
    return failWith(context, "Incorrect argument in _Service");
  }
  return ADMStatusServiceProxy::proxyForServiceCreator_serviceName(
      castTo<ADMStatusServiceCreator>(configured(context, "ServiceCreator")), name);
}

constexpr std::array kMethods{
    method<&serviceValue>("executeServiceValueProcedure:"),
    method<&service>("executeServiceProcedure:"),
};

}  // namespace

constinit const MethodGroup kServiceManipulationProcedures{"ServiceManipulationProcedures",
                                                           kMethods};

}  // namespace commandfilter
