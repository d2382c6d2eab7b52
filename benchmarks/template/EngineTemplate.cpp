#include "EngineTemplate.h"

#include <stdexcept>
#include <utility>

#include "comparison/DatumValue.h"
#include "device_model/CoreFactory.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/ADMEvaluationProcessor.h"
#include "runtime/Cast.h"
#include "runtime/Description.h"
#include "runtime/PropertyList.h"
#include "template/ADMTemplateProcessor.h"
#include "template/status/ADMDMFStatusServiceCreator.h"

namespace commandfilter::benchmarks {

namespace {

Value read(const std::filesystem::path& file) {
  Result<Value> list = readPropertyList(file);
  if (!list) throw std::runtime_error(file.string() + ": " + list.reason());
  return *list;
}

RefPtr<ADMTemplateProcessor> processorOf(const TemplateFiles& files) {
  const RefPtr<ADMServiceInfo> device = CoreFactory::newServiceInfoWithURI_ioProvider(
      String::create("simulated://" + files.device.string()).get(), nullptr);
  device->resolveWithTimeout(0);
  const Value configuration = read(files.configuration);
  return ADMTemplateProcessor::initWithServiceCreator_configurationTemplate_inputParameters(
      ADMDMFStatusServiceCreator::initWithDMFServiceInfo(device).get(),
      castTo<Dictionary>(configuration), nullptr);
}

// No case works with a template that fails.
Datum resultOf(ADMTemplateProcessor& processor) {
  const RefPtr<Dictionary> info = processor.entireInfo();
  if (const RefPtr<Dictionary> errors = processor.errorInfo()) {
    throw std::runtime_error("the template has errors: " + descriptionOf(errors));
  }
  if (!info) throw std::runtime_error("the template has no values");
  return toDatum(info);
}

class Cold final : public Contender {
 public:
  explicit Cold(TemplateFiles files) : files_(std::move(files)) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) keep(processorOf(files_)->entireInfo());
  }
  Datum result() override { return resultOf(*processorOf(files_)); }

 private:
  TemplateFiles files_;
};

class Reading final : public Contender {
 public:
  explicit Reading(TemplateFiles files) : files_(std::move(files)) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      keep(read(files_.device));
      keep(read(files_.configuration));
    }
  }
  Datum result() override {
    run(1);
    return 2;
  }

 private:
  TemplateFiles files_;
};

class Warm final : public Contender {
 public:
  Warm(const TemplateFiles& files, bool reinitializes)
      : processor_(processorOf(files)), reinitializes_(reinitializes) {
    keep(resultOf(*processor_));
  }

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) {
      processor_->startNewSession(reinitializes_);
      keep(processor_->entireInfo());
    }
  }
  Datum result() override {
    processor_->startNewSession(reinitializes_);
    return resultOf(*processor_);
  }

 private:
  RefPtr<ADMTemplateProcessor> processor_;
  bool reinitializes_;
};

class Compilation final : public Contender {
 public:
  explicit Compilation(const std::vector<std::string>& expressions) {
    for (const std::string& expression : expressions) {
      expressions_.push_back(String::create(expression));
    }
    compileAll();
    if (const ADMEvaluationError* error = context_->lastError()) {
      throw std::runtime_error(error->expression()->text() + ": " +
                               error->errorDescription()->text());
    }
  }

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) compileAll();
  }
  Datum result() override { return static_cast<std::int64_t>(expressions_.size()); }

 private:
  // As a template has them, all stay until the last is compiled.
  void compileAll() {
    std::vector<Ref<ADMEvaluationProcessor>> compiled;
    compiled.reserve(expressions_.size());
    for (const Ref<String>& expression : expressions_) {
      compiled.push_back(ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
          expression, context_));
    }
    keep(compiled);
  }

  Ref<ADMSingleValueEvaluationContext> context_ =
      ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(Value(), nullptr);
  std::vector<Ref<String>> expressions_;
};

}  // namespace

std::unique_ptr<Contender> engineCold(const TemplateFiles& files) {
  return std::make_unique<Cold>(files);
}

std::unique_ptr<Contender> engineReading(const TemplateFiles& files) {
  return std::make_unique<Reading>(files);
}

std::unique_ptr<Contender> engineWarm(const TemplateFiles& files, bool reinitializes) {
  return std::make_unique<Warm>(files, reinitializes);
}

std::unique_ptr<Contender> engineCompilationOf(const std::vector<std::string>& expressions) {
  return std::make_unique<Compilation>(expressions);
}

}  // namespace commandfilter::benchmarks
