#include "EngineHost.h"

#include <stdexcept>
#include <utility>

#include "DeviceService.h"
#include "comparison/DatumValue.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/ADMEvaluationProcessor.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/String.h"

namespace commandfilter::benchmarks {

namespace {

Ref<ADMSingleValueEvaluationContext> contextFor(const Surroundings& surroundings) {
  DictionaryBuilder configuration;
  configuration.set("TemplateMacroses", toValue(surroundings.macros));
  return ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(
      DeviceService::create(surroundings.device), configuration.build());
}

Ref<ADMEvaluationProcessor> compile(const Ref<String>& expression,
                                    const Ref<ADMSingleValueEvaluationContext>& context) {
  return ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(expression,
                                                                                 context);
}

// No case works with an expression that fails.
void requireSuccess(const ADMEvaluationContext& context, const std::string& expression) {
  if (const ADMEvaluationError* error = context.lastError()) {
    throw std::runtime_error(expression + ": " + error->errorDescription()->text());
  }
}

class Evaluation final : public Contender {
 public:
  Evaluation(const Surroundings& surroundings, const std::string& expression)
      : context_(contextFor(surroundings)),
        processor_(compile(String::create(expression), context_)) {
    requireSuccess(*context_, expression);
    keep(processor_->execute());
    requireSuccess(*context_, expression);
  }

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) keep(processor_->execute());
  }
  Datum result() override { return toDatum(processor_->execute()); }

 private:
  Ref<ADMSingleValueEvaluationContext> context_;
  Ref<ADMEvaluationProcessor> processor_;
};

class Compilation final : public Contender {
 public:
  Compilation(const Surroundings& surroundings, const std::string& expression)
      : context_(contextFor(surroundings)), expression_(String::create(expression)) {
    keep(compile(expression_, context_));
    requireSuccess(*context_, expression);
  }

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) keep(compile(expression_, context_));
  }
  Datum result() override { return toDatum(compile(expression_, context_)->execute()); }

 private:
  Ref<ADMSingleValueEvaluationContext> context_;
  Ref<String> expression_;
};

}  // namespace

std::unique_ptr<Contender> engineEvaluation(const Surroundings& surroundings,
                                            const std::string& expression) {
  return std::make_unique<Evaluation>(surroundings, expression);
}

std::unique_ptr<Contender> engineCompilation(const Surroundings& surroundings,
                                             const std::string& expression) {
  return std::make_unique<Compilation>(surroundings, expression);
}

}  // namespace commandfilter::benchmarks
