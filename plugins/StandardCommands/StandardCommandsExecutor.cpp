#include "StandardCommandsExecutor.h"

#include <runtime/Array.h>
#include <runtime/Bundle.h>
#include <runtime/Cast.h>
#include <runtime/Description.h>
#include <runtime/Dictionary.h>
#include <runtime/Format.h>
#include <runtime/Module.h>
#include <runtime/Text.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "AttributeLines.h"
#include "CommandTemplate.h"
#include "SchedulerLines.h"

namespace commandfilter::standard {

namespace {

constexpr auto kProtocols = conformances<StandardCommandsExecutor, ICommandFilterExecutor>();
constexpr std::array kInitializers{
    initializer<&StandardCommandsExecutor::initWithFilterContext>("initWithFilterContext:")};

Value valueOf(ICommandFilterTemplateEngine& engine, const char* key) {
  return engine.templateValueForKey(String::create(key).get());
}

// nil and the null object have no text.
std::string textOfValue(const Value& value) {
  return value.isNil() || value.isNull() ? std::string() : descriptionOf(value);
}

// The texts of a list; one value is a list of one.
std::vector<std::string> textsOf(const Value& value) {
  std::vector<std::string> texts;
  if (const auto* elements = castTo<Array>(value)) {
    for (const Value& element : *elements) texts.push_back(textOfValue(element));
  } else if (!value.isNil()) {
    texts.push_back(textOfValue(value));
  }
  return texts;
}

// The command as the bundle spells it, which its template is named after; commands are found
// whatever their case.
std::string nameOfCommand(const String& command, Bundle& bundle) {
  const std::string wanted = lowercase(command.view());
  for (const std::string& name :
       textsOf(bundle.infoDictionary().objectForKey("SupportedCommands"))) {
    if (lowercase(name) == wanted) return name;
  }
  return command.text();
}

ShortForms shortFormsOf(const Value& value) {
  ShortForms forms;
  const auto* attributes = castTo<Dictionary>(value);
  if (attributes == nullptr) return forms;
  for (const DictionaryEntry& attribute : *attributes) {
    const auto* replacements = castTo<Dictionary>(attribute.value);
    if (replacements == nullptr) continue;
    auto& known = forms[textOfValue(attribute.key)];
    for (const DictionaryEntry& entry : *replacements) {
      known[textOfValue(entry.key)] = textOfValue(entry.value);
    }
  }
  return forms;
}

bool contains(const std::vector<std::string>& texts, const std::string& text) {
  return std::ranges::find(texts, text) != texts.end();
}

}  // namespace

constinit const Class StandardCommandsExecutor::kClass{.name = "StandardCommandsExecutor",
                                                       .base = &Object::kClass,
                                                       .protocols = kProtocols,
                                                       .initializers = kInitializers};

RefPtr<StandardCommandsExecutor> StandardCommandsExecutor::initWithFilterContext(
    ICommandFilterContext* context) {
  if (context == nullptr) return nullptr;
  return make<StandardCommandsExecutor>(Ref<ICommandFilterContext>(*context));
}

Value StandardCommandsExecutor::executeCommand(const String& command) {
  const RefPtr<Bundle> bundle = Bundle::bundleForClass(kClass);
  if (!bundle) return String::create("ERROR: StandardCommands lies in no bundle");
  const std::string name = nameOfCommand(command, *bundle);
  const auto engine = templateEngineForCommand(name, bundle->resourcePath(), *context_);
  if (!engine) return format("DEBUG: %s was not carried out", name);
  reportAttributes(*engine);
  reportReasons(*engine);
  reportOptions(*engine);
  Value answer = reportMessages(*engine);
  reportErrors(*engine);
  return answer.isNil() ? Value(format("INFO: %s: the printer cannot be asked", name)) : answer;
}

void StandardCommandsExecutor::reportAttributes(ICommandFilterTemplateEngine& engine) {
  const Value value = valueOf(engine, "Attributes");
  const auto* described = castTo<Dictionary>(value);
  if (described == nullptr) return;
  std::vector<SupplyAttribute> attributes;
  for (const DictionaryEntry& entry : *described) {
    std::string name = textOfValue(entry.key);
    if (isKeyword(name)) attributes.push_back({std::move(name), textsOf(entry.value)});
  }
  const AttributeLines result =
      attributeLines(std::move(attributes), shortFormsOf(valueOf(engine, "ShortForms")),
                     textsOf(valueOf(engine, "KnownNames")));
  for (const std::string& line : result.lines) report(line);
  if (result.leftOut > 0) {
    context_->reportMessageWithFormat("NOTICE: %u supplies do not fit into the queue's attributes",
                                      result.leftOut);
  }
}

void StandardCommandsExecutor::reportReasons(ICommandFilterTemplateEngine& engine) {
  const Value value = valueOf(engine, "Reasons");
  if (value.isNil()) return;
  const auto keywordsOf = [](const Value& list) {
    std::vector<std::string> keywords;
    for (std::string& each : textsOf(list)) {
      if (isKeyword(each) && !contains(keywords, each)) keywords.push_back(std::move(each));
    }
    return keywords;
  };
  const std::vector<std::string> reasons = keywordsOf(value);
  std::vector<std::string> gone = keywordsOf(valueOf(engine, "OwnReasons"));
  std::erase_if(gone, [&reasons](const std::string& each) { return contains(reasons, each); });
  for (const std::string& line : linesOf("STATE: +", ',', reasons)) report(line);
  for (const std::string& line : linesOf("STATE: -", ',', gone)) report(line);
}

void StandardCommandsExecutor::reportOptions(ICommandFilterTemplateEngine& engine) {
  const Value value = valueOf(engine, "Options");
  const auto* options = castTo<Dictionary>(value);
  if (options == nullptr) return;
  std::vector<std::string> items;
  for (const DictionaryEntry& entry : *options) {
    const std::string keyword = textOfValue(entry.key);
    const std::string choice = textOfValue(entry.value);
    if (!isPPDWord(keyword) || !isPPDWord(choice)) continue;
    items.push_back(std::string("Default").append(keyword).append("=").append(choice));
  }
  for (const std::string& line : linesOf("PPD: ", ' ', items)) report(line);
}

Value StandardCommandsExecutor::reportMessages(ICommandFilterTemplateEngine& engine) {
  std::vector<std::string> messages;
  for (const std::string& text : textsOf(valueOf(engine, "Messages"))) {
    std::string line = messageLine(text);
    if (!line.empty()) messages.push_back(std::move(line));
  }
  if (messages.empty()) return {};
  for (std::size_t i = 0; i + 1 < messages.size(); ++i) report(messages[i]);
  return String::create(std::move(messages.back()));
}

void StandardCommandsExecutor::reportErrors(ICommandFilterTemplateEngine& engine) {
  const Value errors = engine.errorInfo();
  const auto* byKey = castTo<Dictionary>(errors);
  if (byKey == nullptr) return;
  for (const DictionaryEntry& entry : *byKey) {
    const auto* error = castTo<Dictionary>(entry.value);
    if (error == nullptr) continue;
    report(messageLine("DEBUG: the template's value " + textOfValue(entry.key) + ": " +
                       textOfValue(error->objectForKey("description"))));
  }
}

}  // namespace commandfilter::standard

namespace {

constexpr const commandfilter::Class* kClasses[] = {
    &commandfilter::standard::StandardCommandsExecutor::kClass};

}  // namespace

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(kClasses);
