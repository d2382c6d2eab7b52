#include "template/LibraryClasses.h"

#include <array>

#include "evaluation/ADMAggregateEvaluationContext.h"
#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ADMMacrosEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "runtime/ClassRegistry.h"
#include "template/ACommandFilterTemplateEngine.h"
#include "template/ACommandFilterTemplateEngineFactoryService.h"
#include "template/ADMGlobalConstantsProcessor.h"
#include "template/ADMStatusValueRepresentation.h"
#include "template/ADMTemplateProcessor.h"
#include "template/ADMTemplateProcessorHolder.h"
#include "template/status/StatusServiceClasses.h"

namespace commandfilter {

std::span<const Class* const> templateClasses() noexcept {
  static constexpr std::array<const Class*, 11> kClasses{
      &ACommandFilterTemplateEngineFactoryService::kClass,
      &ACommandFilterTemplateEngine::kClass,
      &ADMTemplateProcessor::kClass,
      &ADMTemplateProcessorHolder::kClass,
      &ADMStatusValueRepresentation::kClass,
      &ADMGlobalConstantsProcessor::kClass,
      &ADMEvaluationContextBase::kClass,
      &ADMSingleValueEvaluationContext::kClass,
      &ADMArrayEvaluationContext::kClass,
      &ADMAggregateEvaluationContext::kClass,
      &ADMMacrosEvaluationContext::kClass,
  };
  return kClasses;
}

void registerLibraryClasses() {
  ClassRegistry& registry = ClassRegistry::shared();
  registry.add(runtimeClasses()).keep();
  registry.add(statusServiceClasses()).keep();
  registry.add(templateClasses()).keep();
}

}  // namespace commandfilter
