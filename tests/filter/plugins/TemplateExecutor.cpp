// Asks the template engine what the environment says: TEST_TEMPLATE names a template's property
// list, TEST_KEYS the values, separated by commas. Brings a context for values along.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "filter/protocols/ICommandFilterTemplateEngineFactory.h"
#include "plugins/TestExecutor.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/Format.h"
#include "runtime/Module.h"
#include "runtime/PropertyList.h"

namespace commandfilter::testing {

// Adds the name "plugIn".
class TestTemplateContext final : public ADMSingleValueEvaluationContext {
 public:
  static const Class kClass;

  static Ref<TestTemplateContext> create(Value service, RefPtr<Dictionary> configuration) {
    return make<TestTemplateContext>(std::move(service), std::move(configuration));
  }

  TestTemplateContext(Value service, RefPtr<Dictionary> configuration)
      : ADMSingleValueEvaluationContext(std::move(service), std::move(configuration)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value serviceSymbolForNameImpl(const EvaluationName& name) override {
    if (name.text() == "plugIn") return String::create("from the plug-in");
    return ADMSingleValueEvaluationContext::serviceSymbolForNameImpl(name);
  }
};

class TemplateExecutor final : public TestExecutor<TemplateExecutor> {
 public:
  static const Class kClass;

  explicit TemplateExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}

  Value executeCommand(const String& command) override {
    const auto factory = factoryOf("TemplateEngineFactory");
    if (!factory) return String::create("no factory");
    if (command.view() == "Template service") {
      const bool same = factory.get() == factoryOf("TemplateEngineFactory").get();
      const bool lowerCase = static_cast<bool>(factoryOf("templateenginefactory"));
      return format("the same %d, in lower case %d", same, lowerCase);
    }
    const auto engine = command.view() == "Template stored"
                            ? storedEngine(*factory)
                            : factory->templateEngineForTemplate_inputParameters(
                                  castTo<Dictionary>(variableList("TEST_TEMPLATE")),
                                  castTo<Dictionary>(variableList("TEST_INPUT")));
    if (!engine) return String::create("no engine");
    std::string_view keys = variable("TEST_KEYS");
    while (!keys.empty()) {
      const std::size_t end = std::min(keys.find(','), keys.size());
      const Ref<String> key = String::create(std::string(keys.substr(0, end)));
      context().reportMessageWithFormat("%@ = %@", key, engine->templateValueForKey(key.get()));
      keys.remove_prefix(std::min(end + 1, keys.size()));
    }
    return engine->errorInfo();
  }

 private:
  static std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
  }
  static Value variableList(const char* name) {
    Result<Value> list = readPropertyList(std::string(variable(name)));
    return list ? *list : Value();
  }
  RefPtr<ICommandFilterTemplateEngineFactory> factoryOf(std::string_view name) {
    return context().service<ICommandFilterTemplateEngineFactory>(name);
  }
  static RefPtr<ICommandFilterTemplateEngine> storedEngine(
      ICommandFilterTemplateEngineFactory& factory) {
    const Ref<String> table = String::create("Templates");
    const Ref<String> location = String::create(std::string(variable("TEST_TABLE")));
    return factory.templateEngineForDatabaseName_databaseLocation_inputParameters(
        table.get(), location.get(), nullptr);
  }
};

constexpr std::array kContextInitializers{
    initializer<&TestTemplateContext::create>("initWithStatusService:globalConfiguration:")};
constinit const Class TestTemplateContext::kClass{.name = "TestTemplateContext",
                                                  .base = &ADMSingleValueEvaluationContext::kClass,
                                                  .initializers = kContextInitializers};
constinit const Class TemplateExecutor::kClass =
    executorClass<TemplateExecutor>("TemplateExecutor");

constexpr const Class* kClasses[] = {&TemplateExecutor::kClass, &TestTemplateContext::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
