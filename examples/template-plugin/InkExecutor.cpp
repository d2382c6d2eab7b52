#include "InkExecutor.h"

#include <runtime/Bundle.h>
#include <runtime/Cast.h>
#include <runtime/Dictionary.h>
#include <runtime/Format.h>
#include <runtime/PropertyList.h>
#include <runtime/Text.h>

#include <array>

Value InkExecutor::executeCommand(const String& command) {
  // Case does not count in commands: "INK" is found, too.
  const auto engine = templateEngine(lowercase(command.view()) + ".plist");
  if (!engine) return String::create("ERROR: The printer cannot be asked");
  const Value advice = engine->templateValueForKey(String::create("Advice").get());
  reportErrors(*engine);
  if (advice.isNil()) return String::create("WARNING: The printer does not tell");
  return format("INFO: %@", advice);
}

// An engine for a template of the bundle.
RefPtr<ICommandFilterTemplateEngine> InkExecutor::templateEngine(const std::string& file) {
  const RefPtr<Bundle> bundle = Bundle::bundleForClass(kClass);
  if (!bundle) return nullptr;
  Result<Value> list = readPropertyList(bundle->resourcePath() + "/" + file);
  if (!list) {
    context_->reportMessageWithFormat("DEBUG: %s: %s", file, list.reason());
    return nullptr;
  }
  const auto factory =
      context_->service<ICommandFilterTemplateEngineFactory>("TemplateEngineFactory");
  if (!factory) return nullptr;
  return factory->templateEngineForTemplate_inputParameters(castTo<Dictionary>(*list), nullptr);
}

// What went wrong in expressions, for whoever writes the template.
void InkExecutor::reportErrors(ICommandFilterTemplateEngine& engine) {
  const Value report = engine.errorInfo();
  const auto* errors = castTo<Dictionary>(report);
  if (errors == nullptr) return;
  for (const DictionaryEntry& entry : *errors) {
    const auto* error = castTo<Dictionary>(entry.value);
    context_->reportMessageWithFormat("DEBUG: %@: Error %@: %@", entry.key,
                                      error->objectForKey("category"),
                                      error->objectForKey("description"));
  }
}

constexpr auto kProtocols = conformances<InkExecutor, ICommandFilterExecutor>();
constexpr std::array kInitializers{
    initializer<&InkExecutor::initWithFilterContext>("initWithFilterContext:")};
constinit const Class InkExecutor::kClass{.name = "InkExecutor",
                                          .base = &Object::kClass,
                                          .protocols = kProtocols,
                                          .initializers = kInitializers};
