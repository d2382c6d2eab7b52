#include "template/ADMTemplateProcessor.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "runtime/ClassRegistry.h"
#include "runtime/KeyValueLookup.h"
#include "runtime/Send.h"
#include "runtime/TestValues.h"
#include "runtime/ValueVector.h"
#include "template/ServiceCreatorDouble.h"

namespace commandfilter::testing {
namespace {

// A description with a "Value" alone.
Value described(std::string_view expression) {
  return dictionaryOf({{stringOf("Value"), stringOf(expression)}});
}

class TemplateProcessor : public ::testing::Test {
 protected:
  RefPtr<ADMTemplateProcessor> processorOf(const Value& configuration,
                                           const Value& input = Value()) {
    return ADMTemplateProcessor::initWithServiceCreator_configurationTemplate_inputParameters(
        creator_.get(), castTo<Dictionary>(configuration), castTo<Dictionary>(input));
  }
  RefPtr<ADMTemplateProcessor> processorOfValues(
      std::initializer_list<std::pair<Value, Value>> values) {
    return processorOf(dictionaryOf({{stringOf("TemplateValues"), dictionaryOf(values)}}));
  }
  static Value valueOf(ADMTemplateProcessor& processor, std::string_view key) {
    return processor.valueForKey(String::create(std::string(key)).get());
  }

  Ref<ServiceCreatorDouble> creator_ = ServiceCreatorDouble::create();
};

TEST_F(TemplateProcessor, NeedsACreatorAndATemplate) {
  const Value configuration = dictionaryOf({});
  EXPECT_FALSE(processorOf(Value()));
  EXPECT_FALSE(ADMTemplateProcessor::initWithServiceCreator_configurationTemplate_inputParameters(
      nullptr, castTo<Dictionary>(configuration), nullptr));
  EXPECT_TRUE(processorOf(configuration));
}

TEST_F(TemplateProcessor, HasNoValueForNoKey) {
  const auto processor = processorOfValues({{stringOf(""), described("1")}});
  EXPECT_TRUE(processor->valueForKey(nullptr).isNil());
  EXPECT_TRUE(valueOf(*processor, "").isNil());
  EXPECT_FALSE(processor->valueRepresentationForKey(nullptr));
  EXPECT_FALSE(processor->valueRepresentationForKey(String::create("").get()));
}

TEST_F(TemplateProcessor, SharesAConfigurationThatIsMadeOnce) {
  const Value constants = dictionaryOf({{stringOf("One"), stringOf("1")}});
  const Value macros = dictionaryOf({{stringOf("Two"), stringOf("2")}});
  const Value input = dictionaryOf({{stringOf("Who"), stringOf("me")}});
  const auto processor = processorOf(dictionaryOf({{stringOf("TemplateConstants"), constants},
                                                   {stringOf("TemplateMacroses"), macros}}),
                                     input);
  const Ref<Dictionary> configuration = processor->globalConfiguration();
  EXPECT_EQ(configuration.get(), processor->globalConfiguration().get());
  processor->startNewSession(true);
  EXPECT_EQ(configuration.get(), processor->globalConfiguration().get());
  EXPECT_EQ(configuration->count(), 5U);
  EXPECT_NE(castTo<ADMGlobalConstantsProcessor>(configuration->objectForKey("TemplateConstants")),
            nullptr);
  EXPECT_TRUE(configuration->objectForKey("TemplateMacroses").isIdenticalTo(macros));
  EXPECT_TRUE(configuration->objectForKey("InputParameters").isIdenticalTo(input));
  EXPECT_EQ(configuration->objectForKey("ServiceCreator").object(), creator_.get());
  EXPECT_NE(
      castTo<ADMTemplateProcessorHolder>(configuration->objectForKey("EntireTemplateProcessor")),
      nullptr);
}

TEST_F(TemplateProcessor, LeavesOutOfTheConfigurationWhatTheTemplateLacks) {
  const auto processor = processorOf(dictionaryOf({}));
  const Ref<Dictionary> configuration = processor->globalConfiguration();
  EXPECT_EQ(configuration->count(), 2U);
  EXPECT_FALSE(configuration->objectForKey("EntireTemplateProcessor").isNil());
  EXPECT_FALSE(configuration->objectForKey("ServiceCreator").isNil());
}

TEST_F(TemplateProcessor, HandsOnInputParametersThatAreEmpty) {
  const Value input = dictionaryOf({});
  const auto processor = processorOf(dictionaryOf({}), input);
  EXPECT_TRUE(
      processor->globalConfiguration()->objectForKey("InputParameters").isIdenticalTo(input));
}

// Counts how often a context of its class was asked for, and refuses each time.
class CountingContext final : public Object {
 public:
  static const Class kClass;
  static RefPtr<CountingContext> refuse(const Value& /*service*/,
                                        const Dictionary* /*configuration*/) {
    ++asked;
    return nullptr;
  }
  static int asked;
};
int CountingContext::asked = 0;
constexpr std::array kCountingContextInitializers{
    initializer<&CountingContext::refuse>("initWithStatusService:globalConfiguration:")};
constinit const Class CountingContext::kClass{.name = "CountingContext",
                                              .base = &Object::kClass,
                                              .initializers = kCountingContextInitializers};

TEST_F(TemplateProcessor, TriesAContextThatRefusesOnce) {
  const std::array<const Class*, 1> classes{&CountingContext::kClass};
  const auto registration = ClassRegistry::shared().add(classes);
  const auto processor = processorOfValues(
      {{stringOf("A"),
        dictionaryOf({{stringOf("Value"), stringOf("1")},
                      {stringOf("EvaluationContext"), stringOf("CountingContext")}})}});
  CountingContext::asked = 0;
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(valueOf(*processor, "A").isNil());
    processor->startNewSession(true);
  }
  EXPECT_EQ(CountingContext::asked, 1);
}

// A context that asks for all values of the template while it is made for the first time.
class AskingContext final : public Object {
 public:
  static const Class kClass;
  static RefPtr<ADMSingleValueEvaluationContext> ask(const Value& service,
                                                     const Dictionary* configuration) {
    if (ADMTemplateProcessor* processor = std::exchange(asked, nullptr)) {
      seen = processor->entireInfo();
      representation = processor->valueRepresentationForKey(String::create("A").get());
    }
    return ADMSingleValueEvaluationContext::initWithStatusService_globalConfiguration(
        service, RefPtr<Dictionary>(castTo<Dictionary>(Value::sharing(configuration))));
  }
  // Borrowed; nullptr once it has been asked.
  static ADMTemplateProcessor* asked;
  static RefPtr<Dictionary> seen;
  static RefPtr<ADMStatusValueRepresentation> representation;
};
ADMTemplateProcessor* AskingContext::asked = nullptr;
RefPtr<Dictionary> AskingContext::seen;
RefPtr<ADMStatusValueRepresentation> AskingContext::representation;
constexpr std::array kAskingInitializers{
    initializer<&AskingContext::ask>("initWithStatusService:globalConfiguration:")};
constinit const Class AskingContext::kClass{
    .name = "AskingContext", .base = &Object::kClass, .initializers = kAskingInitializers};

TEST_F(TemplateProcessor, KeepsWhatIsMadeWhileItIsBeingMade) {
  const std::array<const Class*, 1> classes{&AskingContext::kClass};
  const auto registration = ClassRegistry::shared().add(classes);
  const auto processor = processorOfValues(
      {{stringOf("A"),
        dictionaryOf({{stringOf("Value"), stringOf("_Array(1)")},
                      {stringOf("EvaluationContext"), stringOf("AskingContext")}})}});
  AskingContext::asked = processor.get();
  const Value value = valueOf(*processor, "A");
  const RefPtr<Dictionary> seen = std::exchange(AskingContext::seen, nullptr);
  const RefPtr<ADMStatusValueRepresentation> made =
      std::exchange(AskingContext::representation, nullptr);
  ASSERT_TRUE(seen);
  EXPECT_TRUE(value.isIdenticalTo(seen->objectForKey("A")));
  EXPECT_EQ(processor->valueRepresentationForKey(String::create("A").get()).get(), made.get());
  EXPECT_TRUE(processor->entireInfo()->objectForKey("A").isIdenticalTo(value));
}

TEST_F(TemplateProcessor, KeepsRepresentationsAndTheirFailures) {
  const auto processor = processorOfValues({{stringOf("A"), described("1")},
                                            {stringOf("Broken"), dictionaryOf({})},
                                            {stringOf("Text"), stringOf("1")}});
  const auto representationOf = [&processor](const char* key) {
    return processor->valueRepresentationForKey(String::create(key).get());
  };
  const auto first = representationOf("A");
  ASSERT_TRUE(first);
  EXPECT_EQ(first->evaluationContext()->globalConfiguration(),
            processor->globalConfiguration().get());
  static_cast<void>(valueOf(*processor, "A"));
  processor->startNewSession(true);
  EXPECT_EQ(representationOf("A").get(), first.get());
  EXPECT_FALSE(processor->errorInfo());
  EXPECT_FALSE(representationOf("Text"));
  EXPECT_FALSE(representationOf("Nowhere"));
  EXPECT_FALSE(processor->errorInfo());
  EXPECT_FALSE(representationOf("Broken"));
  EXPECT_FALSE(representationOf("Broken"));
  EXPECT_EQ(processor->errorInfo()->count(), 1U);
}

TEST_F(TemplateProcessor, ResetsEvaluationsBeforeEachComputation) {
  const auto processor = processorOfValues({{stringOf("A"), described("1")}});
  const auto representation = processor->valueRepresentationForKey(String::create("A").get());
  auto* context = castTo<ADMEvaluationContextBase>(&representation->evaluationContext()->object());
  context->commonCache().setObject_forKey(stringOf("kept"), stringOf("key"));
  EXPECT_EQ(descriptionOf(valueOf(*processor, "A")), "1");
  EXPECT_EQ(context->commonCache().count(), 0U);
}

TEST_F(TemplateProcessor, KeepsAValueForTheSession) {
  const auto processor = processorOfValues({{stringOf("List"), described("_Array(1)")}});
  const Value first = valueOf(*processor, "List");
  EXPECT_TRUE(valueOf(*processor, "List").isIdenticalTo(first));
  processor->startNewSession(false);
  EXPECT_FALSE(valueOf(*processor, "List").isIdenticalTo(first));
  EXPECT_EQ(creator_->reinitialized, 0);
  processor->startNewSession(true);
  EXPECT_EQ(creator_->reinitialized, 1);
}

TEST_F(TemplateProcessor, KeepsNothingWhileThereAreNoServices) {
  const auto processor = processorOfValues({{stringOf("A"), described("1")}});
  creator_->available = false;
  EXPECT_FALSE(processor->servicesAvailable());
  EXPECT_TRUE(valueOf(*processor, "A").isNil());
  EXPECT_FALSE(processor->entireInfo());
  creator_->available = true;
  EXPECT_TRUE(processor->servicesAvailable());
  EXPECT_EQ(descriptionOf(valueOf(*processor, "A")), "1");
  // What is known is not given either.
  creator_->available = false;
  EXPECT_TRUE(valueOf(*processor, "A").isNil());
}

TEST_F(TemplateProcessor, ReportsErrorsInTheOrderOfTheTemplate) {
  const auto processor = processorOfValues({{stringOf("Z"), described("(5")},
                                            {stringOf("Fine"), described("1")},
                                            {stringOf("A"), dictionaryOf({})}});
  static_cast<void>(valueOf(*processor, "A"));
  static_cast<void>(valueOf(*processor, "Z"));
  static_cast<void>(valueOf(*processor, "Fine"));
  const RefPtr<Dictionary> report = processor->errorInfo();
  ASSERT_EQ(report->count(), 2U);
  EXPECT_EQ(descriptionOf(report->begin()->key), "Z");
  const auto* broken = castTo<Dictionary>(report->objectForKey("A"));
  EXPECT_EQ(broken->objectForKey("category").number().encoding(), 'i');
  EXPECT_EQ(descriptionOf(broken->objectForKey("category")), "3");
  EXPECT_EQ(descriptionOf(broken->objectForKey("description")), "Failed to create processor");
}

TEST_F(TemplateProcessor, KnowsWhereErrorsWereRaised) {
  const auto processor = processorOf(dictionaryOf(
      {{stringOf("TemplateMacroses"),
        dictionaryOf({{stringOf("Less"), stringOf("@arg0 lt \"x\"")}})},
       {stringOf("TemplateConstants"), dictionaryOf({{stringOf("Wrong"), stringOf("5 # 6")}})},
       {stringOf("TemplateValues"),
        dictionaryOf({{stringOf("Direct"), described("1 + (2 lt \"x\")")},
                      {stringOf("InMacro"), described("_Less(1)")},
                      {stringOf("Constant"), described("$Wrong")},
                      {stringOf("None"), dictionaryOf({})}})}}));
  for (const char* key : {"Direct", "InMacro", "Constant", "None"}) {
    static_cast<void>(valueOf(*processor, key));
  }
  const std::vector<TemplateError> errors = processor->errors();
  ASSERT_EQ(errors.size(), 3U);
  EXPECT_EQ(errors[0].key->view(), "Direct");
  EXPECT_EQ(errors[0].error->expression()->view(), "1 + (2 lt \"x\")");
  EXPECT_EQ(errors[0].error->sourceRange(), (SourceRange{7, 9}));
  EXPECT_EQ(errors[1].key->view(), "InMacro");
  EXPECT_EQ(errors[1].error->expression()->view(), "@arg0 lt \"x\"");
  EXPECT_EQ(errors[1].error->sourceRange(), (SourceRange{6, 8}));
  EXPECT_EQ(errors[2].key->view(), "None");
  EXPECT_FALSE(errors[2].error);
  EXPECT_EQ(errors[2].category(), TemplateError::kNoProcessor);
  const std::vector<TemplateError> constants = processor->constantErrors();
  ASSERT_EQ(constants.size(), 1U);
  EXPECT_EQ(constants[0].error->expression()->view(), "5 # 6");
  EXPECT_EQ(constants[0].error->sourceRange(), (SourceRange{2, 3}));
}

TEST_F(TemplateProcessor, CompilesAMacroOnceForAllValues) {
  // Every call records the error of the one compilation.
  const auto processor = processorOf(dictionaryOf(
      {{stringOf("TemplateMacroses"), dictionaryOf({{stringOf("Broken"), stringOf("(5")}})},
       {stringOf("TemplateValues"), dictionaryOf({{stringOf("A"), described("_Broken()")},
                                                  {stringOf("B"), described("1 + _Broken()")}})}}));
  static_cast<void>(valueOf(*processor, "A"));
  static_cast<void>(valueOf(*processor, "B"));
  const std::vector<TemplateError> errors = processor->errors();
  ASSERT_EQ(errors.size(), 2U);
  EXPECT_EQ(errors[0].error.get(), errors[1].error.get());
}

TEST_F(TemplateProcessor, GivesAllValuesInTheOrderOfTheTemplate) {
  const auto processor = processorOfValues({{stringOf("Z"), described("1")},
                                            {stringOf("Nil"), described("@nil")},
                                            {stringOf("A"), described("2")}});
  const RefPtr<Dictionary> all = processor->entireInfo();
  ASSERT_EQ(all->count(), 2U);
  EXPECT_EQ(descriptionOf(all->begin()->key), "Z");
  EXPECT_EQ(descriptionOf(all->objectForKey("A")), "2");
}

TEST_F(TemplateProcessor, TakesAllValuesFromTheSession) {
  const auto processor = processorOfValues(
      {{stringOf("A"), described("_Array(1)")}, {stringOf("B"), described("_Array(2)")}});
  const Value first = valueOf(*processor, "A");
  const RefPtr<Dictionary> all = processor->entireInfo();
  EXPECT_TRUE(all->objectForKey("A").isIdenticalTo(first));
  EXPECT_TRUE(valueOf(*processor, "B").isIdenticalTo(all->objectForKey("B")));
}

TEST_F(TemplateProcessor, SkipsKeysThatAreNoTexts) {
  const auto processor = processorOfValues({{Number::integer(1), described("1")},
                                            {Value::null(), described("1")},
                                            {stringOf("A"), described("1")}});
  EXPECT_EQ(processor->entireInfo()->count(), 1U);
  EXPECT_FALSE(processor->errorInfo());
}

TEST_F(TemplateProcessor, IsMadeAndAskedByName) {
  const Value configuration =
      dictionaryOf({{stringOf("TemplateValues"), dictionaryOf({{stringOf("A"), described("1")}})}});
  const Value processor =
      instantiate(ADMTemplateProcessor::kClass,
                  Selector("initWithServiceCreator:configurationTemplate:inputParameters:"),
                  {creator_, configuration, Value()});
  EXPECT_EQ(descriptionOf(send(processor, Selector("valueForKey:"), {stringOf("A")})), "1");
  // The platform's look-up by key asks the same method.
  EXPECT_EQ(descriptionOf(valueForKey(processor, *String::create("A"))), "1");
  EXPECT_FALSE(send(processor, Selector("valueRepresentationForKey:"), {stringOf("A")}).isNil());
  EXPECT_EQ(send(processor, Selector("globalConfiguration")).object(),
            castTo<ADMTemplateProcessor>(processor)->globalConfiguration().get());
  EXPECT_TRUE(send(processor, Selector("errorInfo")).isNil());
  EXPECT_EQ(castTo<Dictionary>(send(processor, Selector("entireInfo")))->count(), 1U);
  send(processor, Selector("startNewSession:"), {Value::boolean(true)});
  EXPECT_EQ(creator_->reinitialized, 1);
  EXPECT_TRUE(send(processor, Selector("servicesAvailable")).number().boolValue());
}

TEST_F(TemplateProcessor, IsReachedThroughAHolderThatDoesNotOwnIt) {
  auto processor = processorOfValues({{stringOf("A"), described("1")}});
  const Value holder = processor->globalConfiguration()->objectForKey("EntireTemplateProcessor");
  EXPECT_EQ(descriptionOf(send(holder, Selector("valueForKey:"), {stringOf("A")})), "1");
  EXPECT_EQ(processor->referenceCount(), 1U);
  processor = nullptr;
  EXPECT_TRUE(send(holder, Selector("valueForKey:"), {stringOf("A")}).isNil());
}

TEST_F(TemplateProcessor, HoldersAreMadeByName) {
  const auto processor = processorOfValues({{stringOf("A"), described("1")}});
  const Value holder = instantiate(ADMTemplateProcessorHolder::kClass,
                                   Selector("initWithTemplateProcessor:"), {Value(processor)});
  EXPECT_EQ(descriptionOf(valueForKey(holder, *String::create("A"))), "1");
}

TEST_F(TemplateProcessor, LivesOnAfterValuesInACircle) {
  const auto processor = processorOfValues({{stringOf("Self"), described("[Self]")},
                                            {stringOf("A"), described("[B]")},
                                            {stringOf("B"), described("1 + [A]")},
                                            {stringOf("Fine"), described("5")}});
  runOnStackOf(std::size_t{1024} * 1024, [&] {
    for (const char* key : {"Self", "A", "B"}) {
      EXPECT_EQ(reasonOf([&] { static_cast<void>(valueOf(*processor, key)); }), "nested too deeply")
          << key;
    }
    EXPECT_EQ(descriptionOf(valueOf(*processor, "Fine")), "5");
  });
}

TEST_F(TemplateProcessor, ReachesALongChainOfValues) {
  DictionaryBuilder values;
  constexpr int kLength = 500;
  for (int i = 0; i < kLength; ++i) {
    values.set("V" + std::to_string(i), described("[V" + std::to_string(i + 1) + "]"));
  }
  values.set("V" + std::to_string(kLength), described("\"end\""));
  const auto processor = processorOf(dictionaryOf({{stringOf("TemplateValues"), values.build()}}));
  EXPECT_EQ(descriptionOf(valueOf(*processor, "V0")), "end");
}

TEST_F(TemplateProcessor, TakesHugeTemplates) {
  DictionaryBuilder values;
  constexpr int kCount = 20'000;
  for (int i = 0; i < kCount; ++i) {
    values.set("V" + std::to_string(i),
               i % 2 == 0 ? described(std::to_string(i)) : stringOf("odd"));
  }
  values.set("Long", described("\"" + std::string(1'000'000, 'x') + "\""));
  const auto processor = processorOf(dictionaryOf({{stringOf("TemplateValues"), values.build()}}));
  EXPECT_EQ(processor->entireInfo()->count(), kCount / 2 + 1U);
  EXPECT_FALSE(processor->errorInfo());
}

TEST_F(TemplateProcessor, TakesDeepTemplates) {
  const Value deep = nestedDictionaries(200'000, stringOf("1"));
  const auto processor = processorOf(dictionaryOf(
      {{stringOf("TemplateConstants"), deep},
       {stringOf("TemplateMacroses"), deep},
       {stringOf("TemplateValues"),
        dictionaryOf({{stringOf("A"), deep},
                      {stringOf("B"),
                       dictionaryOf({{stringOf("Value"), deep}, {stringOf("Filter"), deep}})}})}}));
  EXPECT_TRUE(valueOf(*processor, "A").isNil());
  EXPECT_EQ(reasonOf([&] { static_cast<void>(valueOf(*processor, "B")); }), "nested too deeply");
}

// Every section, and every part of a description, as a value of every kind.
TEST_F(TemplateProcessor, TakesWhatIsOfTheWrongType) {
  const ValueVector odd = {Value::null(),
                           Value::boolean(true),
                           Number::integer(5),
                           Value(Number::real(2.5)),
                           stringOf("text"),
                           stringOf(""),
                           arrayOf({stringOf("1")}),
                           dictionaryOf({}),
                           dictionaryOf({{stringOf("Value"), Value::null()}})};
  const auto ask = [this](const Value& configuration, const Value& input) {
    const auto processor = processorOf(configuration, input);
    for (const char* key : {"A", "Value", "1"}) {
      static_cast<void>(reasonOf([&] { static_cast<void>(valueOf(*processor, key)); }));
    }
    static_cast<void>(reasonOf([&] { static_cast<void>(processor->entireInfo()); }));
    static_cast<void>(processor->errorInfo());
    processor->startNewSession(true);
  };
  for (const Value& value : odd) {
    for (const char* section : {"TemplateValues", "TemplateConstants", "TemplateMacroses"}) {
      DictionaryBuilder sections;
      sections.set("TemplateValues",
                   dictionaryOf({{stringOf("A"), described("_A($A + [A1], @nil)")}}));
      sections.set(section, value);
      ask(sections.build(), dictionaryOf({{stringOf("A"), value}}));
      sections = DictionaryBuilder();
      sections.set("TemplateValues",
                   dictionaryOf({{stringOf("A"), described("_A($A + _InputValue(\"A\"))")}}));
      sections.set(section, dictionaryOf({{stringOf("A"), value}}));
      ask(sections.build(), value);
    }
    for (const char* part :
         {"Value", "ServiceName", "EvaluationContext", "Filter", "Range", "AcceptsEmptyArray"}) {
      DictionaryBuilder description;
      description.set("Value", stringOf("1"));
      description.set(part, value);
      ask(dictionaryOf(
              {{stringOf("TemplateValues"), dictionaryOf({{stringOf("A"), description.build()}})}}),
          Value());
    }
  }
}

}  // namespace
}  // namespace commandfilter::testing
