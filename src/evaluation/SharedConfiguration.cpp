#include "evaluation/SharedConfiguration.h"

#include <utility>

#include "evaluation/ADMEvaluationContextBase.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"

namespace commandfilter {

constinit const Class SharedConfiguration::kClass{.name = "SharedConfiguration",
                                                  .base = &Object::kClass};

SharedConfiguration::SharedConfiguration(Ref<Dictionary> configuration)
    : configuration_(std::move(configuration)),
      constants_(castTo<ADMNamedValues>(configuration_->objectForKey("TemplateConstants"))),
      permanenceOfConstants_(constants_ != nullptr ? constants_->permanence() : nullptr),
      templateValues_(
          castTo<ADMNamedValues>(configuration_->objectForKey("EntireTemplateProcessor"))) {}

Ref<SharedConfiguration> SharedConfiguration::create(Ref<Dictionary> configuration) {
  return make<SharedConfiguration>(std::move(configuration));
}

const CompiledMacro* SharedConfiguration::findMacro(const EvaluationName& name) {
  const auto* table = castTo<Dictionary>(configuration_->objectForKey("TemplateMacroses"));
  const Value found = table != nullptr ? table->objectForKey(Value(name.string())) : Value();
  if (found.isNil()) return nullptr;
  const auto* expression = castTo<String>(found);
  if (expression == nullptr) throw Exception("a macro is no text: " + name.string()->text());
  const CompiledMacro& macro = compiled(*expression);
  if (name.selector()) remember(name.selector()->name(), macro);
  return &macro;
}

void SharedConfiguration::remember(const std::string& name, const CompiledMacro& macro) {
  if (++calledCount_ * 2 > called_.size()) {
    std::vector<Called> before(called_.size() * 2);
    called_.swap(before);
    mask_ = called_.size() - 1;
    for (const Called& called : before) {
      if (called.name != nullptr) called_[placeOf(*called.name)] = called;
    }
  }
  called_[placeOf(name)] = {&name, &macro};
}

const CompiledMacro& SharedConfiguration::compiled(const String& expression) {
  const auto found = macros_.find(&expression);
  if (found != macros_.end()) return found->second;
  // A context of its own catches the error, which is then recorded wherever the macro is called.
  const Ref<ADMEvaluationContextBase> context =
      ADMEvaluationContextBase::initWithStatusService_globalConfiguration(Value(), nullptr);
  Ref<ADMEvaluationProcessor> processor =
      ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
          Ref<String>(const_cast<String&>(expression)), context);  // NOLINT: shared, not changed
  return macros_
      .emplace(&expression, CompiledMacro{std::move(processor),
                                          RefPtr<ADMEvaluationError>(context->lastError())})
      .first->second;
}

}  // namespace commandfilter
