#include "template/ADMGlobalConstantsProcessor.h"

#include <array>
#include <utility>

#include "expression/ADMEvaluationProcessor.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<ADMGlobalConstantsProcessor, ADMNamedValues>();
constexpr std::array kMethods{
    method<&ADMGlobalConstantsProcessor::valueOfConstant>("valueOfConstant:")};
constexpr std::array kInitializers{
    initializer<&ADMGlobalConstantsProcessor::initWithGlobalConstantsInfo>(
        "initWithGlobalConstantsInfo:")};

}  // namespace

constinit const Class ADMGlobalConstantsProcessor::kClass{.name = "ADMGlobalConstantsProcessor",
                                                          .base = &Object::kClass,
                                                          .protocols = kProtocols,
                                                          .methods = kMethods,
                                                          .initializers = kInitializers};

ADMGlobalConstantsProcessor::ADMGlobalConstantsProcessor(RefPtr<Dictionary> info)
    : info_(std::move(info)),
      context_(ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(Value(),
                                                                                          nullptr)),
      evaluatedConstants_(MutableDictionary::create()) {}

Ref<ADMGlobalConstantsProcessor> ADMGlobalConstantsProcessor::initWithGlobalConstantsInfo(
    RefPtr<Dictionary> info) {
  return make<ADMGlobalConstantsProcessor>(std::move(info));
}

Value ADMGlobalConstantsProcessor::valueOfConstant(const String* name) {
  if (name == nullptr) return {};
  const Value key = Value::sharing(name);
  const Value& known = evaluatedConstants_->objectForKey(key);
  if (!known.isNil()) return known.nullAsNil();
  const Value found = info_ ? info_->objectForKey(key) : Value();
  if (found.isNil()) return {};
  auto* expression = castTo<String>(found);
  if (expression == nullptr) throw Exception("a constant is no text: " + name->text());
  Value value = evaluate(Ref<String>(*castTo<String>(key)), Ref<String>(*expression));
  evaluatedConstants_->setObject_forKey(value.orNull(), key);
  return value;
}

Value ADMGlobalConstantsProcessor::evaluate(const Ref<String>& name,
                                            const Ref<String>& expression) {
  // Held, so that no new error can be taken for it.
  const RefPtr<ADMEvaluationError> before(context_->lastError());
  context_->resetEvaluations();
  Value value =
      ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(expression, context_)
          ->execute();
  ADMEvaluationError* error = context_->lastError();
  if (error != before.get()) errors_.push_back({name, RefPtr<ADMEvaluationError>(error)});
  return value;
}

}  // namespace commandfilter
