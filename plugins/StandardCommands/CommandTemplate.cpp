#include "CommandTemplate.h"

#include <filter/protocols/ICommandFilterTemplateEngineFactory.h>
#include <runtime/Cast.h>
#include <runtime/Dictionary.h>
#include <runtime/File.h>
#include <runtime/ProcessInfo.h>
#include <runtime/PropertyList.h>
#include <runtime/String.h>

namespace commandfilter::standard {

namespace {

// What keeps a table from being used for any model; empty when nothing does.
std::string mistakeIn(const std::string& table) {
  Result<Value> list = readPropertyList(table);
  if (!list) return list.reason();
  return castTo<Dictionary>(*list) != nullptr ? std::string() : "it is no dictionary";
}

}  // namespace

std::string tableFolder() {
  return ProcessInfo::environmentValue("CUPS_SERVERROOT").value_or("/etc/cups") + "/commandfilter";
}

RefPtr<ICommandFilterTemplateEngine> templateEngineForCommand(std::string_view command,
                                                              const std::string& resources,
                                                              ICommandFilterContext& context) {
  const auto factory =
      context.service<ICommandFilterTemplateEngineFactory>("TemplateEngineFactory");
  if (!factory) {
    context.reportMessageWithFormat(
        "ERROR: %s: the filter has no device model; install it again, with all of its files",
        command);
    return nullptr;
  }
  const Ref<String> name = String::create(std::string(command));
  const Ref<String> folder = String::create(tableFolder());
  if (auto engine = factory->templateEngineForDatabaseName_databaseLocation_inputParameters(
          name.get(), folder.get(), nullptr)) {
    return engine;
  }
  const std::string table = folder->text() + '/' + name->text() + ".plist";
  if (isRegularFile(table)) {
    const std::string mistake = mistakeIn(table);
    if (!mistake.empty()) {
      context.reportMessageWithFormat("WARNING: %s: %s; correct or remove it", table, mistake);
    }
  }
  const std::string path = resources + '/' + name->text() + ".plist";
  Result<Value> list = readPropertyList(path);
  if (!list) {
    context.reportMessageWithFormat("ERROR: %s: %s; install the filter again", path, list.reason());
    return nullptr;
  }
  return factory->templateEngineForTemplate_inputParameters(castTo<Dictionary>(*list), nullptr);
}

}  // namespace commandfilter::standard
