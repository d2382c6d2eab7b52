#include "check/KnownNames.h"

#include <algorithm>
#include <array>
#include <utility>

#include "check/NameText.h"
#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ProcedureSignatures.h"
#include "evaluation/protocol/EvaluationSymbol.h"
#include "expression/Operators.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Text.h"

namespace commandfilter::tools {

namespace {

// Procedures of all contexts, plug-ins' included, and macros.
std::vector<std::string_view> callableNames(const Definitions& definitions) {
  std::vector<std::string_view> names = definitions.names(DefinitionKind::Macro);
  for (const Class* context : definitions.contexts()) {
    const std::vector<std::string_view> own = proceduresOf(*context);
    names.insert(names.end(), own.begin(), own.end());
  }
  return names;
}

std::vector<std::string_view> operatorWords() {
  std::vector<std::string_view> words;
  for (const Operator& row : operators()) {
    for (const std::string_view word : row.words) {
      if (!word.empty()) words.push_back(word);
    }
  }
  return words;
}

// Words that other languages have, and what says the same here.
struct Foreign {
  std::string_view word;
  std::string_view remedy;
};
constexpr std::array kForeign{
    Foreign{"if", "write condition then value else other, without if"},
    Foreign{"null", "write @nil"},
    Foreign{"none", "write @nil"},
    Foreign{"nil", "write @nil"},
    Foreign{"true", "write @true"},
    Foreign{"yes", "write @true"},
    Foreign{"false", "write @false"},
    Foreign{"no", "write @false"},
    Foreign{"xor", "write bitxor for bits, ne for truth"},
    Foreign{"mod", "there is no arithmetic; a plug-in can have a procedure for it"},
    Foreign{"div", "there is no arithmetic; a plug-in can have a procedure for it"},
};
constexpr std::array<std::string_view, 7> kContextNames{"service", "element", "identifier", "index",
                                                        "initial", "argc",    "argv"};

}  // namespace

std::vector<std::string_view> proceduresOf(const Class& context) {
  std::vector<std::string_view> names;
  const auto add = [&names](std::span<const Method> methods) {
    for (const Method& method : methods) {
      if (const auto name = textBetween(method.selector, "execute", "Procedure:")) {
        names.push_back(*name);
      }
    }
  };
  for (const Class* info = &context; info != nullptr; info = info->base) {
    add(info->methods);
    for (const MethodGroup* group : info->groups) add(group->methods);
  }
  return names;
}

std::vector<std::string_view> externalProcedures() {
  std::vector<std::string_view> names;
  for (const Class* info : ClassRegistry::shared().classes()) {
    if (const auto name = textBetween(info->name, "A", "ExternalProcedure")) names.push_back(*name);
  }
  return names;
}

KnownNames::KnownNames(const Definitions& definitions)
    : definitions_(definitions),
      callable_(callableNames(definitions)),
      callableSet_(callable_.begin(), callable_.end()),
      constants_(definitions.names(DefinitionKind::Constant)),
      values_(definitions.names(DefinitionKind::Value)),
      procedures_(callable_),
      externals_(externalProcedures()),
      words_(operatorWords()) {}

std::string KnownNames::definedAs(std::string_view name) const {
  if (name.empty()) return {};
  const std::string shown = shownName(name);
  if (definitions_.find(DefinitionKind::Constant, name)) return "write $" + shown;
  if (definitions_.find(DefinitionKind::Value, name)) return "write [" + shown + "]";
  if (definitions_.find(DefinitionKind::Macro, name)) return "write _" + shown + "()";
  return {};
}

std::string KnownNames::remedyForConstant(std::string_view name) {
  if (name.empty()) return "put the constant's name behind the $";
  const std::string_view nearest = constants_.of(name);
  if (!nearest.empty()) return "write $" + shownName(nearest);
  std::string other = definedAs(name);
  return other.empty() ? "define it in TemplateConstants" : other;
}

std::string KnownNames::remedyForValue(std::string_view name) {
  if (name.empty()) return "put the value's name between the brackets";
  const std::string_view bare = trimmed(name);
  if (bare != name && definitions_.find(DefinitionKind::Value, bare)) {
    return "write [" + shownName(bare) + "], without blanks";
  }
  const std::string_view nearest = values_.of(name);
  if (!nearest.empty()) return "write [" + shownName(nearest) + "]";
  std::string other = definedAs(name);
  return other.empty() ? "define it in TemplateValues" : other;
}

std::string KnownNames::remedyForProcedure(std::string_view name) {
  if (name.empty()) return "put the procedure's name behind the _";
  const std::string_view nearest = procedures_.of(name);
  if (!nearest.empty()) {
    const bool isMacro = definitions_.find(DefinitionKind::Macro, nearest).has_value();
    const ProcedureSignature* signature = isMacro ? nullptr : procedureSignature(nearest);
    const std::string shown = "write _" + shownName(nearest);
    return signature == nullptr ? shown : shown + "(" + std::string(signature->arguments) + ")";
  }
  const std::vector<std::string_view> externals = externalProcedures();
  if (std::ranges::find(externals, name) != externals.end()) {
    return "write _External(\"" + shownName(name) + "\", ...)";
  }
  std::string other = definedAs(name);
  return other.empty() ? "define a macro of that name in TemplateMacroses" : other;
}

std::string KnownNames::remedyForExternal(std::string_view name) {
  const std::string_view nearest = externals_.of(name);
  if (!nearest.empty()) return "write \"" + shownName(nearest) + "\"";
  return "name the bundle that has the class with --plugin";
}

std::string KnownNames::remedyForWord(std::string_view word, bool isCalled) {
  if (isCalled) {
    if (callableSet_.contains(word)) return "write _" + shownName(word);
    const std::string_view nearest = procedures_.of(word);
    if (!nearest.empty()) return "write _" + shownName(nearest);
  }
  if (std::string defined = definedAs(word); !defined.empty()) return defined;
  for (const Foreign& row : kForeign) {
    if (editDistance(word, row.word, 0) == 0) return std::string(row.remedy);
  }
  if (std::ranges::find(kContextNames, word) != kContextNames.end()) {
    return "write @" + std::string(word);
  }
  const std::string_view nearest = words_.of(word);
  if (!nearest.empty()) return "write " + std::string(nearest);
  return "put a text between double quotes, @ in front of a name that the printer answers";
}

}  // namespace commandfilter::tools
