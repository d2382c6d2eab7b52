#include "template/ACommandFilterTemplateEngineFactoryService.h"

#include <array>

#include "runtime/Cast.h"
#include "runtime/device_model/ADMCoreFactory.h"
#include "runtime/device_model/ADMModelInfo.h"
#include "runtime/device_model/ADMModelInfoManager.h"
#include "runtime/device_model/ADMServiceInfo.h"
#include "template/ACommandFilterTemplateEngine.h"

namespace commandfilter {

namespace {

using Factory = ACommandFilterTemplateEngineFactoryService;

constexpr auto kProtocols =
    conformances<Factory, ICommandFilterTemplateEngineFactory, ICommandFilterService>();
constexpr std::array kMethods{
    method<&Factory::templateEngineForTemplate_inputParameters>(
        "templateEngineForTemplate:inputParameters:"),
    method<&Factory::templateEngineForDatabaseName_databaseLocation_inputParameters>(
        "templateEngineForDatabaseName:databaseLocation:inputParameters:"),
};
constexpr std::array kClassMethods{classMethod<&Factory::serviceCanBeLoaded>("serviceCanBeLoaded")};
constexpr std::array kInitializers{
    initializer<&Factory::initWithServiceInfoProvider>("initWithServiceInfoProvider:")};

}  // namespace

constinit const Class ACommandFilterTemplateEngineFactoryService::kClass{
    .name = "ACommandFilterTemplateEngineFactoryService",
    .base = &Object::kClass,
    .protocols = kProtocols,
    .methods = kMethods,
    .classMethods = kClassMethods,
    .initializers = kInitializers};

bool ACommandFilterTemplateEngineFactoryService::serviceCanBeLoaded() {
  return ADMCoreFactory::find().has_value();
}

RefPtr<ACommandFilterTemplateEngineFactoryService>
ACommandFilterTemplateEngineFactoryService::initWithServiceInfoProvider(
    ICommandFilterServiceInfoProvider* provider) {
  if (!serviceCanBeLoaded()) return nullptr;
  return make<ACommandFilterTemplateEngineFactoryService>(
      RefPtr<ICommandFilterServiceInfoProvider>(provider));
}

Value ACommandFilterTemplateEngineFactoryService::serviceInfo() const {
  return serviceInfoProvider_ ? serviceInfoProvider_->serviceInfo() : Value();
}

RefPtr<ICommandFilterTemplateEngine>
ACommandFilterTemplateEngineFactoryService::templateEngineForTemplate_inputParameters(
    const Dictionary* configurationTemplate, const Dictionary* inputParameters) {
  if (configurationTemplate == nullptr) return nullptr;
  return ACommandFilterTemplateEngine::initWithServiceInfo_configurationTemplate_inputParameters(
      serviceInfo(), configurationTemplate, inputParameters);
}

RefPtr<ICommandFilterTemplateEngine> ACommandFilterTemplateEngineFactoryService::
    templateEngineForDatabaseName_databaseLocation_inputParameters(
        const String* databaseName, const String* databaseLocation,
        const Dictionary* inputParameters) {
  if (databaseName == nullptr || databaseLocation == nullptr) return nullptr;
  const RefPtr<ADMModelInfoManager> manager = ADMModelInfoManager::sharedManager();
  if (!manager || !manager->registerTable_location(databaseName, databaseLocation)) return nullptr;
  const Value device = serviceInfo();
  auto* described = castTo<ADMServiceInfo>(device);
  const RefPtr<ADMModelInfo> model = described != nullptr ? described->modelInfo() : nullptr;
  if (!model) return nullptr;
  const Ref<String> infoPath = String::create("CommandFilterTemplate");
  const Value found = model->valueForInfoPath_inTable(infoPath.get(), databaseName);
  return templateEngineForTemplate_inputParameters(castTo<Dictionary>(found), inputParameters);
}

}  // namespace commandfilter
