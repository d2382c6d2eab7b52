#include "template/ADMTemplateProcessor.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "runtime/Cast.h"
#include "runtime/Number.h"
#include "runtime/StackGuard.h"

namespace commandfilter {

namespace {

constexpr std::array kMethods{
    method<&ADMTemplateProcessor::valueForKey>("valueForKey:"),
    method<&ADMTemplateProcessor::valueRepresentationForKey>("valueRepresentationForKey:"),
    method<&ADMTemplateProcessor::globalConfiguration>("globalConfiguration"),
    method<&ADMTemplateProcessor::errorInfo>("errorInfo"),
    method<&ADMTemplateProcessor::entireInfo>("entireInfo"),
    method<&ADMTemplateProcessor::startNewSession>("startNewSession:"),
    method<&ADMTemplateProcessor::servicesAvailable>("servicesAvailable"),
};
constexpr std::array kInitializers{
    initializer<
        &ADMTemplateProcessor::initWithServiceCreator_configurationTemplate_inputParameters>(
        "initWithServiceCreator:configurationTemplate:inputParameters:"),
};

RefPtr<Dictionary> sharedDictionary(const Dictionary* dictionary) {
  return RefPtr<Dictionary>(castTo<Dictionary>(Value::sharing(dictionary)));
}

RefPtr<Dictionary> sectionOf(const Dictionary& configuration, std::string_view name) {
  return RefPtr<Dictionary>(castTo<Dictionary>(configuration.objectForKey(name)));
}

Ref<Dictionary> reportOf(const TemplateError& error) {
  DictionaryBuilder report;
  report.set("category", Number::integer(error.category()));
  report.set("description",
             error.error ? error.error->errorDescription()
                         : String::create(std::string(TemplateError::kNoProcessorDescription)));
  return report.build();
}

}  // namespace

constinit const Class ADMTemplateProcessor::kClass{.name = "ADMTemplateProcessor",
                                                   .base = &Object::kClass,
                                                   .methods = kMethods,
                                                   .initializers = kInitializers};

ADMTemplateProcessor::ADMTemplateProcessor(Ref<ADMStatusServiceCreator> serviceCreator,
                                           Ref<Dictionary> configuration,
                                           RefPtr<Dictionary> inputParameters)
    : template_(std::move(configuration)),
      valuesTemplate_(sectionOf(*template_, "TemplateValues")),
      serviceCreator_(std::move(serviceCreator)),
      valueRepresentations_(MutableDictionary::create()),
      inputParameters_(std::move(inputParameters)),
      templateValuesCache_(MutableDictionary::create()) {}

ADMTemplateProcessor::~ADMTemplateProcessor() {
  if (holder_) holder_->forgetTemplateProcessor();
}

RefPtr<ADMTemplateProcessor>
ADMTemplateProcessor::initWithServiceCreator_configurationTemplate_inputParameters(
    ADMStatusServiceCreator* serviceCreator, const Dictionary* configurationTemplate,
    const Dictionary* inputParameters) {
  const RefPtr<Dictionary> configuration = sharedDictionary(configurationTemplate);
  if (serviceCreator == nullptr || !configuration) return nullptr;
  return make<ADMTemplateProcessor>(Ref<ADMStatusServiceCreator>(*serviceCreator),
                                    Ref<Dictionary>(*configuration),
                                    sharedDictionary(inputParameters));
}

Value ADMTemplateProcessor::valueForKey(const String* key) {
  if (key == nullptr || key->isEmpty() || !servicesAvailable()) return {};
  // Values that name each other compute each other.
  StackGuard::check();
  const Value name = Value::sharing(key);
  const Value& known = templateValuesCache_->objectForKey(name);
  if (!known.isNil()) return known.nullAsNil();
  Value value;
  if (const RefPtr<ADMStatusValueRepresentation> representation = valueRepresentationForKey(key)) {
    representation->resetEvaluations();
    value = representation->representationData();
  }
  templateValuesCache_->setObject_forKey(value.orNull(), name);
  return value;
}

RefPtr<ADMStatusValueRepresentation> ADMTemplateProcessor::valueRepresentationForKey(
    const String* key) {
  if (key == nullptr || key->isEmpty()) return nullptr;
  const Value name = Value::sharing(key);
  const Value& known = valueRepresentations_->objectForKey(name);
  if (!known.isNil()) {
    return RefPtr<ADMStatusValueRepresentation>(
        static_cast<ADMStatusValueRepresentation*>(known.object()));
  }
  const auto* info =
      valuesTemplate_ ? castTo<Dictionary>(valuesTemplate_->objectForKey(name)) : nullptr;
  if (info == nullptr) return nullptr;
  RefPtr<ADMStatusValueRepresentation> representation = makeRepresentation(*info);
  valueRepresentations_->setObject_forKey(Value(representation).orNull(), name);
  return representation;
}

RefPtr<ADMStatusValueRepresentation> ADMTemplateProcessor::makeRepresentation(
    const Dictionary& info) {
  RefPtr<ADMStatusValueRepresentation> representation = ADMStatusValueRepresentation::
      initWithRepresentationInfo_statusServiceCreator_globalConfiguration(
          &info, serviceCreator_.get(), globalConfiguration());
  if (!representation || globalConfiguration_->objectForKey("TemplateMacroses").isNil()) {
    return representation;
  }
  auto* context = castTo<ADMEvaluationContextBase>(&representation->evaluationContext()->object());
  if (context == nullptr) return representation;
  if (macrosContext_) {
    context->shareCompiledMacrosOf(*macrosContext_);
  } else {
    macrosContext_ = RefPtr<ADMEvaluationContextBase>(context);
  }
  return representation;
}

Ref<Dictionary> ADMTemplateProcessor::globalConfiguration() {
  if (!globalConfiguration_) globalConfiguration_ = makeGlobalConfiguration();
  return Ref<Dictionary>(*globalConfiguration_);
}

Ref<Dictionary> ADMTemplateProcessor::makeGlobalConfiguration() {
  DictionaryBuilder configuration;
  if (RefPtr<Dictionary> constants = sectionOf(*template_, "TemplateConstants")) {
    constants_ = ADMGlobalConstantsProcessor::initWithGlobalConstantsInfo(std::move(constants));
    configuration.set("TemplateConstants", constants_);
  }
  if (RefPtr<Dictionary> macros = sectionOf(*template_, "TemplateMacroses")) {
    configuration.set("TemplateMacroses", std::move(macros));
  }
  holder_ = ADMTemplateProcessorHolder::initWithTemplateProcessor(this);
  configuration.set("EntireTemplateProcessor", holder_);
  if (inputParameters_) configuration.set("InputParameters", inputParameters_);
  configuration.set("ServiceCreator", serviceCreator_);
  return configuration.build();
}

std::vector<TemplateError> ADMTemplateProcessor::errors() const {
  std::vector<TemplateError> errors;
  if (!valuesTemplate_) return errors;
  for (const DictionaryEntry& entry : *valuesTemplate_) {
    const Value& known = valueRepresentations_->objectForKey(entry.key);
    auto* key = castTo<String>(entry.key);
    if (known.isNil() || key == nullptr) continue;
    const auto* representation = castTo<ADMStatusValueRepresentation>(known);
    RefPtr<ADMEvaluationError> error(representation != nullptr ? representation->lastError()
                                                               : nullptr);
    if (error || known.isNull()) errors.push_back({Ref<String>(*key), std::move(error)});
  }
  return errors;
}

std::vector<TemplateError> ADMTemplateProcessor::constantErrors() const {
  return constants_ ? constants_->errors() : std::vector<TemplateError>();
}

RefPtr<Dictionary> ADMTemplateProcessor::errorInfo() const {
  DictionaryBuilder report;
  for (const TemplateError& error : errors()) report.set(error.key, reportOf(error));
  if (report.count() == 0) return nullptr;
  return report.build();
}

RefPtr<Dictionary> ADMTemplateProcessor::entireInfo() {
  if (!valuesTemplate_) return nullptr;
  DictionaryBuilder values;
  values.reserve(valuesTemplate_->count());
  for (const DictionaryEntry& entry : *valuesTemplate_) {
    Value value = valueForKey(castTo<String>(entry.key));
    if (!value.isNil()) values.set(entry.key, std::move(value));
  }
  if (values.count() == 0) return nullptr;
  return values.build();
}

void ADMTemplateProcessor::startNewSession(bool reinitializeServices) {
  templateValuesCache_->removeAllObjects();
  if (reinitializeServices) serviceCreator_->reinitializeServices();
}

}  // namespace commandfilter
