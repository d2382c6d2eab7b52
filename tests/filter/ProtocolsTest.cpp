#include <gtest/gtest.h>

#include "filter/ACommandFilterContext.h"
#include "filter/protocols/ICommandFilterContext.h"
#include "filter/protocols/ICommandFilterExecutor.h"
#include "filter/protocols/ICommandFilterService.h"
#include "filter/protocols/ICommandFilterServiceInfoProvider.h"
#include "filter/protocols/ICommandFilterTemplateEngine.h"
#include "filter/protocols/ICommandFilterTemplateEngineFactory.h"
#include "runtime/Protocol.h"

namespace commandfilter {
namespace {

TEST(PluginProtocols, HaveTheirNames) {
  EXPECT_EQ(ICommandFilterExecutor::kProtocol.name, "ICommandFilterExecutor");
  EXPECT_EQ(ICommandFilterContext::kProtocol.name, "ICommandFilterContext");
  EXPECT_EQ(ICommandFilterService::kProtocol.name, "ICommandFilterService");
  EXPECT_EQ(ICommandFilterServiceInfoProvider::kProtocol.name, "ICommandFilterServiceInfoProvider");
  EXPECT_EQ(ICommandFilterTemplateEngineFactory::kProtocol.name,
            "ICommandFilterTemplateEngineFactory");
  EXPECT_EQ(ICommandFilterTemplateEngine::kProtocol.name, "ICommandFilterTemplateEngine");
}

TEST(PluginProtocols, OnlyTheEngineFactoryIsAService) {
  const Protocol& service = ICommandFilterService::kProtocol;
  EXPECT_TRUE(includesProtocol(ICommandFilterTemplateEngineFactory::kProtocol, service));
  for (const Protocol* other :
       {&ICommandFilterExecutor::kProtocol, &ICommandFilterContext::kProtocol,
        &ICommandFilterServiceInfoProvider::kProtocol, &ICommandFilterTemplateEngine::kProtocol}) {
    EXPECT_FALSE(includesProtocol(*other, service)) << other->name;
    EXPECT_TRUE(other->adopted.empty()) << other->name;
  }
}

TEST(PluginProtocols, TheFiltersContextConformsToItsProtocolOnly) {
  EXPECT_TRUE(ACommandFilterContext::kClass.conformsToProtocol(ICommandFilterContext::kProtocol));
  EXPECT_FALSE(ACommandFilterContext::kClass.conformsToProtocol(ICommandFilterExecutor::kProtocol));
}

}  // namespace
}  // namespace commandfilter
