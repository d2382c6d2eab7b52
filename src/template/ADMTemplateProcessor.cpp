#include "template/ADMTemplateProcessor.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "runtime/Cast.h"
#include "runtime/Number.h"
#include "runtime/StackGuard.h"
#include "template/KeyedRepresentation.h"

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
      inputParameters_(std::move(inputParameters)) {}

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
  KeyedRepresentation* keyed = keyedRepresentation(Value::sharing(key));
  return keyed != nullptr ? valueOf(*keyed) : Value();
}

Value ADMTemplateProcessor::valueOf(KeyedRepresentation& keyed) {
  if (!keyed.keptValue().isNil()) return keyed.keptValue().nullAsNil();
  // Values that name each other compute each other.
  StackGuard::check();
  Value value;
  if (ADMStatusValueRepresentation* representation = keyed.representation().get()) {
    representation->resetEvaluations();
    value = representation->representationData();
  }
  keyed.keepValue(value);
  return value;
}

RefPtr<ADMStatusValueRepresentation> ADMTemplateProcessor::valueRepresentationForKey(
    const String* key) {
  if (key == nullptr || key->isEmpty()) return nullptr;
  const KeyedRepresentation* keyed = keyedRepresentation(Value::sharing(key));
  return keyed != nullptr ? keyed->representation() : nullptr;
}

KeyedRepresentation* ADMTemplateProcessor::knownRepresentation(const Value& key) const {
  // Nothing else is put there.
  return static_cast<KeyedRepresentation*>(valueRepresentations_->objectForKey(key).object());
}

KeyedRepresentation* ADMTemplateProcessor::keyedRepresentation(const Value& key) {
  if (KeyedRepresentation* known = knownRepresentation(key)) return known;
  return valuesTemplate_ ? newRepresentation(key, valuesTemplate_->objectForKey(key)) : nullptr;
}

KeyedRepresentation* ADMTemplateProcessor::newRepresentation(const Value& key,
                                                             const Value& description) {
  const auto* info = castTo<Dictionary>(description);
  if (info == nullptr) return nullptr;
  const std::size_t before = valueRepresentations_->count();
  RefPtr<ADMStatusValueRepresentation> representation = makeRepresentation(*info);
  // A plug-in's context may ask for values while it is made. What was made meanwhile stays: it is
  // known by its address.
  if (valueRepresentations_->count() != before) {
    if (KeyedRepresentation* known = knownRepresentation(key)) return known;
  }
  const Ref<KeyedRepresentation> keyed = make<KeyedRepresentation>(std::move(representation));
  valueRepresentations_->addObject_forKey(keyed, key);
  return keyed.get();
}

RefPtr<ADMStatusValueRepresentation> ADMTemplateProcessor::makeRepresentation(
    const Dictionary& info) {
  RefPtr<ADMStatusValueRepresentation> representation = ADMStatusValueRepresentation::
      initWithRepresentationInfo_statusServiceCreator_globalConfiguration(
          &info, serviceCreator_.get(), globalConfiguration());
  if (!representation) return representation;
  auto* context = castTo<ADMEvaluationContextBase>(&representation->evaluationContext()->object());
  if (context == nullptr) return representation;
  if (sharedContext_) {
    context->shareConfigurationOf(*sharedContext_);
  } else {
    sharedContext_ = RefPtr<ADMEvaluationContextBase>(context);
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
    const Object* known = valueRepresentations_->objectForKey(entry.key).object();
    auto* key = castTo<String>(entry.key);
    if (known == nullptr || key == nullptr) continue;
    const auto& representation = static_cast<const KeyedRepresentation*>(known)->representation();
    RefPtr<ADMEvaluationError> error(representation ? representation->lastError() : nullptr);
    if (error || !representation) errors.push_back({Ref<String>(*key), std::move(error)});
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
  valueRepresentations_->reserve(valuesTemplate_->count());
  inOrder_.resize(valuesTemplate_->count());
  auto known = inOrder_.begin();
  for (const DictionaryEntry& entry : *valuesTemplate_) {
    KeyedRepresentation*& keyed = *known++;
    const auto* key = castTo<String>(entry.key);
    if (key == nullptr || key->isEmpty() || !servicesAvailable()) continue;
    if (keyed == nullptr) keyed = knownRepresentation(entry.key);
    if (keyed == nullptr) keyed = newRepresentation(entry.key, entry.value);
    if (keyed == nullptr) continue;
    Value value = valueOf(*keyed);
    if (!value.isNil()) values.add(entry, std::move(value));
  }
  if (values.count() == 0) return nullptr;
  return values.build();
}

void ADMTemplateProcessor::startNewSession(bool reinitializeServices) {
  for (const DictionaryEntry& entry : *valueRepresentations_) {
    static_cast<KeyedRepresentation*>(entry.value.object())->forgetValue();
  }
  if (reinitializeServices) serviceCreator_->reinitializeServices();
}

}  // namespace commandfilter
