#include "check/ValueContext.h"

#include <vector>

#include "check/NameText.h"
#include "check/NearestName.h"
#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "runtime/ClassRegistry.h"

namespace commandfilter::tools {

namespace {

const Class& usualContext(bool hasRange) {
  return hasRange ? ADMArrayEvaluationContext::kClass : ADMSingleValueEvaluationContext::kClass;
}

std::vector<std::string_view> contextNames() {
  std::vector<std::string_view> names;
  for (const Class* info : ClassRegistry::shared().classes()) {
    if (info->conformsToProtocol(ADMEvaluationContext::kProtocol)) names.push_back(info->name);
  }
  return names;
}

}  // namespace

ValueContext contextOfValue(std::string_view className, bool hasRange) {
  ValueContext context{&usualContext(hasRange), Severity::Warning, {}, {}};
  if (className.empty()) return context;
  const std::string shown = shownName(className);
  const Class* named = classNamed(className);
  if (named == nullptr) {
    context.message = "there is no class " + shown + ", so the usual context is used";
    const std::string_view nearest = NearestName(contextNames()).of(className);
    context.remedy = nearest.empty() ? "name the bundle that has the class with --plugin"
                                     : "write " + std::string(nearest);
    return context;
  }
  const std::string_view made = hasRange ? "initWithStatusService:globalConfiguration:elementsList:"
                                         : "initWithStatusService:globalConfiguration:";
  const bool isContext = named->conformsToProtocol(ADMEvaluationContext::kProtocol);
  if (!isContext || named->initializer(Selector(made)) == nullptr) {
    context.severity = Severity::Error;
    context.message = shown +
                      (isContext ? " cannot be the context of a value "
                                 : " is no class of contexts, so there is no value") +
                      (isContext ? (hasRange ? "with a Range" : "without a Range") : "");
    context.remedy = "name a class of contexts that has the initialiser " + std::string(made) +
                     ", or take EvaluationContext out";
    return context;
  }
  context.info = named;
  const bool iterates = named->conformsToProtocol(ADMArrayIteration::kProtocol);
  if (iterates != hasRange) {
    context.message = hasRange ? shown + " walks over no list, so the Range is ignored"
                               : shown + " walks over a list, which only a Range gives";
    context.remedy = hasRange ? "take the Range out, or name another class" : "add a Range";
  }
  return context;
}

}  // namespace commandfilter::tools
