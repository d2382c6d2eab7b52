#include "template/ACommandFilterTemplateEngineFactoryService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "runtime/Cast.h"
#include "runtime/Send.h"
#include "runtime/TestValues.h"
#include "template/LibraryClasses.h"
#include "template/ServiceInfoDouble.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Service = ACommandFilterTemplateEngineFactoryService;

Value simpleTemplate() {
  return dictionaryOf(
      {{stringOf("TemplateValues"),
        dictionaryOf({{stringOf("A"), dictionaryOf({{stringOf("Value"), stringOf("1")}})}})}});
}

class EngineFactory : public ::testing::Test {
 protected:
  [[nodiscard]] RefPtr<ICommandFilterTemplateEngine> engineFor(const Value& configuration) const {
    return service_->templateEngineForTemplate_inputParameters(castTo<Dictionary>(configuration),
                                                               nullptr);
  }
  [[nodiscard]] RefPtr<ICommandFilterTemplateEngine> storedEngine(
      const char* table = "Printers", const char* location = "/tables") const {
    const RefPtr<String> name = table != nullptr ? RefPtr<String>(String::create(table)) : nullptr;
    const RefPtr<String> place =
        location != nullptr ? RefPtr<String>(String::create(location)) : nullptr;
    return service_->templateEngineForDatabaseName_databaseLocation_inputParameters(
        name.get(), place.get(), nullptr);
  }
  static Value valueOf(ICommandFilterTemplateEngine& engine, std::string_view key) {
    return engine.templateValueForKey(String::create(std::string(key)).get());
  }

  FrameworkDouble framework_;
  Ref<ProviderDouble> provider_ = ProviderDouble::create(ServiceInfoDouble::create());
  RefPtr<Service> service_ = Service::initWithServiceInfoProvider(provider_.get());
};

TEST(EngineFactoryWithoutAFramework, CannotBeLoaded) {
  EXPECT_FALSE(Service::serviceCanBeLoaded());
  const auto provider = ProviderDouble::create(Value());
  EXPECT_FALSE(Service::initWithServiceInfoProvider(provider.get()));
  EXPECT_EQ(provider->asked, 0);
}

TEST_F(EngineFactory, IsFoundByTheNameOfTheService) {
  const auto classes = ClassRegistry::shared().add(templateClasses());
  const Class* info = classNamed("ACommandFilterTemplateEngineFactoryService");
  ASSERT_EQ(info, &Service::kClass);
  EXPECT_TRUE(sendToClass(*info, Selector("serviceCanBeLoaded")).number().boolValue());
  const Value made = instantiate(*info, Selector("initWithServiceInfoProvider:"), {provider_});
  EXPECT_NE(castTo<ICommandFilterTemplateEngineFactory>(made), nullptr);
  EXPECT_NE(castTo<ICommandFilterService>(made), nullptr);
  const Value engine = send(made, Selector("templateEngineForTemplate:inputParameters:"),
                            {simpleTemplate(), Value()});
  EXPECT_NE(castTo<ICommandFilterTemplateEngine>(engine), nullptr);
  EXPECT_TRUE(send(made,
                   Selector("templateEngineForDatabaseName:databaseLocation:inputParameters:"),
                   {Value(), Value(), Value()})
                  .isNil());
}

TEST_F(EngineFactory, AsksForTheDeviceWhenAnEngineIsMade) {
  EXPECT_EQ(provider_->asked, 0);
  const auto first = engineFor(simpleTemplate());
  EXPECT_EQ(provider_->asked, 1);
  const auto second = engineFor(simpleTemplate());
  EXPECT_EQ(provider_->asked, 2);
  EXPECT_NE(first.get(), second.get());
  EXPECT_EQ(descriptionOf(valueOf(*first, "A")), "1");
}

TEST_F(EngineFactory, HasNoEngineWithoutATemplate) {
  EXPECT_FALSE(engineFor(Value()));
  EXPECT_EQ(provider_->asked, 0);
}

TEST_F(EngineFactory, HasAnEngineForAnEmptyTemplate) {
  const auto engine = engineFor(dictionaryOf({}));
  ASSERT_TRUE(engine);
  EXPECT_TRUE(valueOf(*engine, "A").isNil());
  EXPECT_TRUE(engine->errorInfo().isNil());
}

TEST_F(EngineFactory, HasAnEngineWithoutADevice) {
  provider_->info = Value();
  const auto engine = engineFor(simpleTemplate());
  ASSERT_TRUE(engine);
  EXPECT_TRUE(valueOf(*engine, "A").isNil());
}

TEST_F(EngineFactory, HasAnEngineWithoutAProvider) {
  service_ = Service::initWithServiceInfoProvider(nullptr);
  ASSERT_TRUE(service_);
  const auto engine = engineFor(simpleTemplate());
  ASSERT_TRUE(engine);
  EXPECT_TRUE(valueOf(*engine, "A").isNil());
  EXPECT_FALSE(storedEngine());
}

TEST_F(EngineFactory, FindsTheTemplateOfTheModel) {
  framework_.modelInfo["CommandFilterTemplate"] = simpleTemplate();
  const auto engine = storedEngine();
  ASSERT_TRUE(engine);
  EXPECT_EQ(descriptionOf(valueOf(*engine, "A")), "1");
  EXPECT_THAT(framework_.calls,
              ElementsAre("shared manager", "register Printers at /tables", "model info",
                          "value for CommandFilterTemplate in Printers"));
  // Once for its model, and once for the engine.
  EXPECT_EQ(provider_->asked, 2);
}

TEST_F(EngineFactory, HandsTheInputParametersOn) {
  const Value input = dictionaryOf({{stringOf("Who"), stringOf("me")}});
  const Value configuration = dictionaryOf(
      {{stringOf("TemplateValues"),
        dictionaryOf({{stringOf("Who"),
                       dictionaryOf({{stringOf("Value"), stringOf("_InputValue(\"Who\")")}})}})}});
  framework_.modelInfo["CommandFilterTemplate"] = configuration;
  const auto direct = service_->templateEngineForTemplate_inputParameters(
      castTo<Dictionary>(configuration), castTo<Dictionary>(input));
  const auto stored = service_->templateEngineForDatabaseName_databaseLocation_inputParameters(
      String::create("a").get(), String::create("b").get(), castTo<Dictionary>(input));
  EXPECT_EQ(descriptionOf(valueOf(*direct, "Who")), "me");
  EXPECT_EQ(descriptionOf(valueOf(*stored, "Who")), "me");
}

TEST_F(EngineFactory, AsksNobodyWithoutATableOrALocation) {
  EXPECT_FALSE(storedEngine(nullptr, "/tables"));
  EXPECT_FALSE(storedEngine("Printers", nullptr));
  EXPECT_THAT(framework_.calls, IsEmpty());
  EXPECT_EQ(provider_->asked, 0);
}

TEST_F(EngineFactory, AsksNoDeviceForATableThatCannotBeRegistered) {
  framework_.registers = false;
  EXPECT_FALSE(storedEngine());
  EXPECT_EQ(provider_->asked, 0);
}

TEST_F(EngineFactory, HasNoEngineWhenTheModelHasNoTemplate) {
  EXPECT_FALSE(storedEngine());
  EXPECT_EQ(provider_->asked, 1);
  framework_.modelInfo["CommandFilterTemplate"] = stringOf("no dictionary");
  EXPECT_FALSE(storedEngine());
  provider_->info = Value();
  EXPECT_FALSE(storedEngine());
}

}  // namespace
}  // namespace commandfilter::testing
