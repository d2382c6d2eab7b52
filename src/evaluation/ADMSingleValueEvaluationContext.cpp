#include "evaluation/ADMSingleValueEvaluationContext.h"

#include <array>

namespace commandfilter {

namespace {

constexpr std::array kInitializers{
    initializer<&ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration>(
        "initWithStatusService:globalConfiguration:"),
};

}  // namespace

constinit const Class ADMSingleValueEvaluationContext::kClass{
    .name = "ADMSingleValueEvaluationContext",
    .base = &ADMEvaluationContextBase::kClass,
    .initializers = kInitializers};

Ref<ADMSingleValueEvaluationContext>
ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(
    Value statusService, RefPtr<Dictionary> globalConfiguration) {
  return make<ADMSingleValueEvaluationContext>(std::move(statusService),
                                               std::move(globalConfiguration));
}

Value ADMSingleValueEvaluationContext::processSelectorImpl(const Selector& selector) {
  return askService(selector, Value());
}

}  // namespace commandfilter
