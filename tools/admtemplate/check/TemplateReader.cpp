#include "check/TemplateReader.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "check/NameText.h"
#include "check/NearestName.h"
#include "check/ValueContext.h"
#include "evaluation/ADMMacrosEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Data.h"
#include "runtime/Date.h"

namespace commandfilter::tools {

namespace {

constexpr std::array<std::string_view, 3> kSections{"TemplateValues", "TemplateConstants",
                                                    "TemplateMacroses"};
constexpr std::array<std::string_view, 6> kDescriptionKeys{
    "Value", "ServiceName", "Range", "Filter", "AcceptsEmptyArray", "EvaluationContext"};

std::string_view kindOf(const Value& value) {
  if (value.isNumber()) {
    if (value.number().isBoolean()) return "a boolean";
    return value.number().isReal() ? "a real number" : "a number";
  }
  if (castTo<String>(value) != nullptr) return "a text";
  if (castTo<Array>(value) != nullptr) return "an array";
  if (castTo<Dictionary>(value) != nullptr) return "a dictionary";
  if (castTo<Data>(value) != nullptr) return "data";
  return castTo<Date>(value) != nullptr ? "a date" : "nothing";
}

std::vector<std::string_view> serviceNames() {
  std::vector<std::string_view> names;
  for (const Class* info : ClassRegistry::shared().classes()) {
    if (const auto name = textBetween(info->name, "ADM", "ServiceFactory")) names.push_back(*name);
  }
  return names;
}
bool isService(std::string_view name) {
  return classNamed("ADM" + std::string(name) + "ServiceFactory") != nullptr;
}

class Reader {
 public:
  Reader(const Dictionary& configuration, KeyPaths& paths, Findings& findings)
      : configuration_(configuration), paths_(paths), findings_(findings) {}

  Definitions read() {
    checkSectionNames();
    for (const DictionaryEntry& entry : configuration_) {
      const std::string_view name = textOf(castTo<String>(entry.key));
      if (std::ranges::find(kSections, name) == kSections.end()) continue;
      const KeyPath& path = paths_.add(nullptr, name);
      if (const auto* section = castTo<Dictionary>(entry.value)) {
        readSection(name, path, *section);
      } else {
        complain(path, kind::kWrongType, Severity::Error,
                 std::string(name) + " is " + std::string(kindOf(entry.value)) + " and is ignored",
                 "make it a dictionary");
      }
    }
    return std::move(definitions_);
  }

 private:
  // Other sections may be there for somebody else, unless they look like one of the three.
  void checkSectionNames() {
    NearestName nearest({kSections.begin(), kSections.end()});
    bool isExplained = false;
    for (const DictionaryEntry& entry : configuration_) {
      const std::string_view name = textOf(castTo<String>(entry.key));
      if (std::ranges::find(kSections, name) != kSections.end()) continue;
      const std::string_view meant = nearest.of(name);
      if (meant.empty()) continue;
      isExplained = isExplained || meant == kSections[0];
      complain(paths_.add(nullptr, name), kind::kIgnoredKey, Severity::Error,
               "the section " + shownName(name) + " is ignored",
               "write " + std::string(meant) + " if that is meant");
    }
    if (isExplained || !configuration_.objectForKey(kSections[0]).isNil()) return;
    findings_.addAtKey(nullptr, {kind::kMissing, Severity::Error,
                                 "the template has no TemplateValues, so it has no values",
                                 "add a dictionary with the key TemplateValues"});
  }

  void readSection(std::string_view name, const KeyPath& path, const Dictionary& section) {
    for (const DictionaryEntry& entry : section) {
      const std::string_view key = textOf(castTo<String>(entry.key));
      const KeyPath& entryPath = paths_.add(&path, key);
      if (name == kSections[0]) {
        readValue(entryPath, entry.value);
      } else if (name == kSections[1]) {
        readExpression(DefinitionKind::Constant, entryPath, entry.value);
      } else {
        readExpression(DefinitionKind::Macro, entryPath, entry.value);
      }
    }
  }

  void readExpression(DefinitionKind kind, const KeyPath& path, const Value& value) {
    const bool isMacro = kind == DefinitionKind::Macro;
    const std::size_t definition = definitions_.add(
        {kind, path.key, &path,
         isMacro ? &ADMMacrosEvaluationContext::kClass : &ADMSingleValueEvaluationContext::kClass});
    const auto role = isMacro ? ExpressionSite::Role::Macro : ExpressionSite::Role::Constant;
    if (auto* text = castTo<String>(value)) {
      definitions_.sites.push_back({definition, role, &path, Ref<String>(*text)});
      return;
    }
    complain(path, kind::kWrongType, Severity::Error,
             "the " + std::string(nameOf(kind)) + " " + shownName(path.key) + " is " +
                 std::string(kindOf(value)) + ", and whatever uses it has no value",
             castTo<Dictionary>(value) != nullptr || castTo<Array>(value) != nullptr
                 ? "make it an expression, such as _Array(1, 2) or _Dictionary(\"text\", 1)"
                 : "make it an expression: a <string>");
  }

  void readValue(const KeyPath& path, const Value& value) {
    const auto* description = castTo<Dictionary>(value);
    if (description == nullptr) {
      complain(path, kind::kWrongType, Severity::Error,
               "the value " + shownName(path.key) + " is " + std::string(kindOf(value)) +
                   " and is ignored",
               "make it a dictionary with the key Value");
      return;
    }
    const bool hasRange = !textAt(*description, "Range").empty();
    const ValueContext context =
        contextOfValue(textAt(*description, "EvaluationContext"), hasRange);
    const bool hasService = !textAt(*description, "ServiceName").empty();
    const Description part{
        definitions_.add({DefinitionKind::Value, path.key, &path, context.info,
                          hasService ? &paths_.add(&path, "ServiceName") : nullptr}),
        hasRange, !textAt(*description, "Filter").empty(), context};
    if (path.key.empty()) {
      complain(path, kind::kUnused, Severity::Error, "a value without a name cannot be asked for",
               "give it a name");
    }
    if (description->objectForKey("Value").isNil()) {
      complain(path, kind::kMissing, Severity::Error,
               "the value " + shownName(path.key) + " has no Value",
               "add the key Value with an expression");
    }
    for (const DictionaryEntry& entry : *description) {
      const std::string_view key = textOf(castTo<String>(entry.key));
      readKey(part, paths_.add(&path, key), entry.value);
    }
  }

  // What is known of a value while its keys are read.
  struct Description {
    std::size_t definition;
    bool hasRange;
    bool hasFilter;
    const ValueContext& context;
  };

  void readKey(const Description& part, const KeyPath& path, const Value& value) {
    if (path.key == "Value") {
      readResult(part, path, value);
    } else if (std::ranges::find(kDescriptionKeys, path.key) == kDescriptionKeys.end()) {
      const std::string_view meant = keyNames_.of(path.key);
      complain(path, kind::kIgnoredKey, Severity::Warning,
               "the key " + shownName(path.key) + " is ignored",
               meant.empty() ? "take it out" : "write " + std::string(meant));
    } else if (path.key == "AcceptsEmptyArray") {
      checkAcceptsEmptyArray(path, value, part.hasRange);
    } else if (castTo<String>(value) == nullptr) {
      complain(path, kind::kWrongType, Severity::Error,
               std::string(path.key) + " is " + std::string(kindOf(value)) + " and must be a text",
               "make it a <string>");
    } else if (castTo<String>(value)->isEmpty()) {
      complain(path, kind::kIgnoredKey, Severity::Warning,
               "an empty " + std::string(path.key) + " has no effect", "fill it, or take it out");
    } else if (path.key == "Filter" || path.key == "Range") {
      const bool isFilter = path.key == "Filter";
      definitions_.sites.push_back(
          {part.definition, isFilter ? ExpressionSite::Role::Filter : ExpressionSite::Role::Range,
           &path, Ref<String>(*castTo<String>(value)), !(isFilter && part.hasRange)});
    } else if (path.key == "ServiceName") {
      checkServiceName(path, castTo<String>(value)->view());
    } else if (path.key == "EvaluationContext" && !part.context.message.empty()) {
      complain(path, kind::kIgnoredKey, part.context.severity, part.context.message,
               part.context.remedy);
    }
  }

  // A printer may bring services of its own, so only a name that is like a known one is suspicious.
  void checkServiceName(const KeyPath& path, std::string_view name) {
    const std::string_view meant = isService(name) ? std::string_view() : services_.of(name);
    if (meant.empty()) return;
    complain(path, kind::kUndefined, Severity::Warning,
             shownName(name) + " is no service that is known", "write " + std::string(meant));
  }

  void checkAcceptsEmptyArray(const KeyPath& path, const Value& value, bool hasRange) {
    const std::string_view text = textOf(castTo<String>(value));
    if (!hasRange) {
      complain(path, kind::kIgnoredKey, Severity::Warning,
               "AcceptsEmptyArray has no effect without a Range", "take it out, or add a Range");
    } else if (text != "NO" && text != "YES") {
      complain(path, kind::kIgnoredKey, Severity::Warning,
               "AcceptsEmptyArray has an effect only when it is the text NO",
               "write <string>NO</string>, or take it out");
    }
  }

  // An expression, or a dictionary of results. Property lists are not deep enough to exhaust the
  // stack.
  void readResult(const Description& part, const KeyPath& path, const Value& value) {
    if (auto* text = castTo<String>(value)) {
      if (text->isEmpty()) {
        complain(path, kind::kMissing, Severity::Warning, "an empty expression is always nil",
                 "write what it stands for; @nil for nothing");
      } else {
        definitions_.sites.push_back({part.definition, ExpressionSite::Role::Value, &path,
                                      Ref<String>(*text), !part.hasRange && !part.hasFilter});
      }
    } else if (const auto* results = castTo<Dictionary>(value)) {
      for (const DictionaryEntry& entry : *results) {
        readResult(part, paths_.add(&path, textOf(castTo<String>(entry.key))), entry.value);
      }
      if (results->count() == 0) {
        complain(path, kind::kMissing, Severity::Warning, "an empty dictionary is always nil",
                 "add keys with expressions");
      }
    } else {
      complain(path, kind::kWrongType, Severity::Error,
               shownName(path.key) + " is " + std::string(kindOf(value)) + " and is always nil",
               "make it an expression, a <string>, or a dictionary of expressions");
    }
  }

  static std::string_view textAt(const Dictionary& description, std::string_view key) {
    return textOf(castTo<String>(description.objectForKey(key)));
  }

  void complain(const KeyPath& path, std::string_view kind, Severity severity, std::string message,
                std::string remedy) {
    findings_.addAtKey(&path, {kind, severity, std::move(message), std::move(remedy)});
  }

  const Dictionary& configuration_;
  KeyPaths& paths_;
  Findings& findings_;
  Definitions definitions_;
  NearestName services_{serviceNames()};
  NearestName keyNames_{{kDescriptionKeys.begin(), kDescriptionKeys.end()}};
};

}  // namespace

Definitions readTemplate(const Dictionary& configuration, KeyPaths& paths, Findings& findings) {
  return Reader(configuration, paths, findings).read();
}

}  // namespace commandfilter::tools
