// The plug-in protocols as data.
#include <array>

#include "filter/protocols/ICommandFilterContext.h"
#include "filter/protocols/ICommandFilterExecutor.h"
#include "filter/protocols/ICommandFilterService.h"
#include "filter/protocols/ICommandFilterServiceInfoProvider.h"
#include "filter/protocols/ICommandFilterTemplateEngine.h"
#include "filter/protocols/ICommandFilterTemplateEngineFactory.h"

namespace commandfilter {

namespace {

constexpr std::array<const Protocol*, 1> kFactoryAdopts{&ICommandFilterService::kProtocol};

}  // namespace

constinit const Protocol ICommandFilterContext::kProtocol{"ICommandFilterContext"};
constinit const Protocol ICommandFilterExecutor::kProtocol{"ICommandFilterExecutor"};
constinit const Protocol ICommandFilterService::kProtocol{"ICommandFilterService"};
constinit const Protocol ICommandFilterServiceInfoProvider::kProtocol{
    "ICommandFilterServiceInfoProvider"};
constinit const Protocol ICommandFilterTemplateEngine::kProtocol{"ICommandFilterTemplateEngine"};
constinit const Protocol ICommandFilterTemplateEngineFactory::kProtocol{
    "ICommandFilterTemplateEngineFactory", kFactoryAdopts};

}  // namespace commandfilter
