#include "template/ACommandFilterTemplateEngine.h"

#include <array>

#include "runtime/Exception.h"
#include "template/status/ADMDMFStatusServiceCreator.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols =
    conformances<ACommandFilterTemplateEngine, ICommandFilterTemplateEngine>();
constexpr std::array kMethods{
    method<&ACommandFilterTemplateEngine::templateValueForKey>("templateValueForKey:"),
    method<&ACommandFilterTemplateEngine::errorInfo>("errorInfo"),
};
constexpr std::array kInitializers{
    initializer<
        &ACommandFilterTemplateEngine::initWithServiceInfo_configurationTemplate_inputParameters>(
        "initWithServiceInfo:configurationTemplate:inputParameters:"),
};

}  // namespace

constinit const Class ACommandFilterTemplateEngine::kClass{.name = "ACommandFilterTemplateEngine",
                                                           .base = &Object::kClass,
                                                           .protocols = kProtocols,
                                                           .methods = kMethods,
                                                           .initializers = kInitializers};

Ref<ACommandFilterTemplateEngine>
ACommandFilterTemplateEngine::initWithServiceInfo_configurationTemplate_inputParameters(
    const Value& serviceInfo, const Dictionary* configurationTemplate,
    const Dictionary* inputParameters) {
  const RefPtr<ADMDMFStatusServiceCreator> creator =
      ADMDMFStatusServiceCreator::initWithDMFServiceInfo(serviceInfo);
  return make<ACommandFilterTemplateEngine>(
      ADMTemplateProcessor::initWithServiceCreator_configurationTemplate_inputParameters(
          creator.get(), configurationTemplate, inputParameters));
}

Value ACommandFilterTemplateEngine::templateValueForKey(const String* key) {
  if (!templateProcessor_) return {};
  try {
    return templateProcessor_->valueForKey(key);
  } catch (const Exception&) {
    // A service that cannot answer costs the executor this value and nothing else.
    return {};
  }
}

Value ACommandFilterTemplateEngine::errorInfo() {
  return templateProcessor_ ? Value(templateProcessor_->errorInfo()) : Value();
}

}  // namespace commandfilter
