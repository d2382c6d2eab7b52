// A plug-in for the command "ReportLevels": what it asks the printer stands in Levels.plist.
#include <filter/protocols/ICommandFilterExecutor.h>
#include <filter/protocols/ICommandFilterTemplateEngineFactory.h>
#include <runtime/Array.h>
#include <runtime/Bundle.h>
#include <runtime/Cast.h>
#include <runtime/Class.h>
#include <runtime/Description.h>
#include <runtime/Dictionary.h>
#include <runtime/Format.h>
#include <runtime/Module.h>
#include <runtime/PropertyList.h>

#include <array>
#include <string>
#include <utility>

using namespace commandfilter;

class LevelsExecutor final : public Implements<Object, ICommandFilterExecutor> {
 public:
  static const Class kClass;

  static RefPtr<LevelsExecutor> initWithFilterContext(ICommandFilterContext* context) {
    if (context == nullptr) return nullptr;
    return make<LevelsExecutor>(Ref<ICommandFilterContext>(*context));
  }

  explicit LevelsExecutor(Ref<ICommandFilterContext> context) : context_(std::move(context)) {}

  const Class& classInfo() const noexcept override { return kClass; }

  Value executeCommand(const String& /*command*/) override {
    const RefPtr<ICommandFilterTemplateEngine> engine = templateEngine();
    if (!engine) return String::create("ERROR: The printer cannot be asked for its levels");
    const Value names = valueOf(*engine, "Names");
    const Value levels = valueOf(*engine, "Levels");
    const Value low = valueOf(*engine, "Low");
    reportErrors(*engine);
    if (names.isNil() || levels.isNil()) return String::create("WARNING: No levels");
    context_->reportMessageWithFormat("ATTR: marker-names=%s marker-levels=%s", joined(names),
                                      joined(levels));
    if (low.isNil()) return String::create("INFO: All supplies are well filled");
    return format("WARNING: Nearly empty: %s", joined(low));
  }

 private:
  // An engine for the template in the bundle; nil without the template or the device model.
  RefPtr<ICommandFilterTemplateEngine> templateEngine() {
    const auto factory =
        context_->service<ICommandFilterTemplateEngineFactory>("TemplateEngineFactory");
    const RefPtr<Bundle> bundle = Bundle::bundleForClass(kClass);
    if (!factory || !bundle) return nullptr;
    Result<Value> list = readPropertyList(bundle->resourcePath() + "/Levels.plist");
    if (!list) {
      context_->reportMessageWithFormat("DEBUG: Levels.plist: %s", list.reason());
      return nullptr;
    }
    return factory->templateEngineForTemplate_inputParameters(castTo<Dictionary>(*list), nullptr);
  }

  static Value valueOf(ICommandFilterTemplateEngine& engine, const char* key) {
    return engine.templateValueForKey(String::create(key).get());
  }

  // The elements with commas between them.
  static std::string joined(const Value& list) {
    std::string text;
    if (const auto* elements = castTo<Array>(list)) {
      for (const Value& element : *elements) {
        if (!text.empty()) text += ',';
        text += descriptionOf(element);
      }
    }
    return text;
  }

  // What went wrong in expressions, for whoever writes the template.
  void reportErrors(ICommandFilterTemplateEngine& engine) {
    const Value report = engine.errorInfo();
    const auto* errors = castTo<Dictionary>(report);
    if (errors == nullptr) return;
    for (const DictionaryEntry& entry : *errors) {
      const auto* error = castTo<Dictionary>(entry.value);
      context_->reportMessageWithFormat("DEBUG: %@: %@", entry.key,
                                        error->objectForKey("description"));
    }
  }

  Ref<ICommandFilterContext> context_;
};

constexpr auto kProtocols = conformances<LevelsExecutor, ICommandFilterExecutor>();
constexpr std::array kInitializers{
    initializer<&LevelsExecutor::initWithFilterContext>("initWithFilterContext:")};
constinit const Class LevelsExecutor::kClass{.name = "LevelsExecutor",
                                             .base = &Object::kClass,
                                             .protocols = kProtocols,
                                             .initializers = kInitializers};

constexpr const Class* kClasses[] = {&LevelsExecutor::kClass};
extern "C" constinit const Module command_filter_module = moduleOf(kClasses);
