#include "check/UsageCheck.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <unordered_set>
#include <utility>

#include "check/Circles.h"
#include "check/KnownNames.h"
#include "check/NameText.h"
#include "evaluation/ADMArrayEvaluationContext.h"
#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "expression/CodeUnits.h"
#include "expression/LexicalClasses.h"

namespace commandfilter::tools {

namespace {

std::string kindAndName(const Definition& definition) {
  return std::string(nameOf(definition.kind)) + " " + shownName(definition.name);
}

// As an expression refers to it.
std::string written(const Definition& definition) {
  return (definition.kind == DefinitionKind::Macro ? "_" : "") + shownName(definition.name);
}

std::unordered_set<std::string_view> builtInProcedures() {
  const std::vector<std::string_view> names = proceduresOf(ADMEvaluationContextBase::kClass);
  return {names.begin(), names.end()};
}

std::vector<bool> reachedFrom(const Definitions& definitions, const ReferenceGraph& graph,
                              std::vector<std::size_t> waiting) {
  std::vector<bool> reached(definitions.all().size());
  bool isAnyValueUsed = false;
  const auto reach = [&](std::size_t node) {
    if (!reached[node]) waiting.push_back(node);
    reached[node] = true;
  };
  for (const std::size_t root : waiting) reached[root] = true;
  while (!waiting.empty()) {
    const std::size_t node = waiting.back();
    waiting.pop_back();
    for (const Use& use : graph.uses[node]) reach(use.target);
    if (isAnyValueUsed || !graph.usesAnyValue[node]) continue;
    isAnyValueUsed = true;
    for (std::size_t i = 0; i < definitions.all().size(); ++i) {
      if (definitions.all()[i].kind == DefinitionKind::Value) reach(i);
    }
  }
  return reached;
}

std::vector<std::size_t> rootsOf(const Definitions& definitions,
                                 const std::vector<std::string>& keys, Findings& findings) {
  std::vector<std::size_t> roots;
  for (std::size_t i = 0; keys.empty() && i < definitions.all().size(); ++i) {
    if (definitions.all()[i].kind == DefinitionKind::Value) roots.push_back(i);
  }
  for (const std::string& key : keys) {
    if (const auto value = definitions.find(DefinitionKind::Value, key)) {
      roots.push_back(*value);
    } else {
      findings.addAtKey(nullptr, {kind::kUndefined, Severity::Error,
                                  "the value " + shownName(key) + " is asked for and not defined",
                                  "define it in TemplateValues, or ask for another"});
    }
  }
  return roots;
}

void complainOfUnused(const Definition& definition, bool isAsked, Findings& findings) {
  const bool needsName = definition.kind != DefinitionKind::Value;
  if (needsName && !isCallableName(definition.name)) {
    findings.addAtKey(definition.path, {kind::kUnused, Severity::Error,
                                        "no expression can name the " + kindAndName(definition),
                                        "give it a name of letters, digits and _"});
    return;
  }
  findings.addAtKey(definition.path, {kind::kUnused, Severity::Warning,
                                      "the " + kindAndName(definition) + " is never used",
                                      isAsked ? "take it out, or ask for it" : "take it out"});
}

std::string way(const Definitions& definitions, const Circle& circle) {
  constexpr std::size_t kMostShown = 12;
  std::string text = written(definitions.all()[circle.start()]);
  for (std::size_t i = 0; i < circle.uses.size(); ++i) {
    const bool isLast = i + 1 == circle.uses.size();
    if (i + 1 == kMostShown && !isLast) text.append(" -> ...");
    if (i + 1 >= kMostShown && !isLast) continue;
    text.append(" -> ").append(written(definitions.all()[circle.uses[i].target]));
  }
  return text;
}

}  // namespace

bool isCallableName(std::string_view name) {
  const CodeUnits units(name);
  return units.length() > 0 && units.skipWhile(0, isNameUnit) == units.length();
}

void checkUsage(const Definitions& definitions, const ReferenceGraph& graph,
                const std::vector<std::string>& keys, Findings& findings) {
  const std::vector<bool> reached =
      reachedFrom(definitions, graph, rootsOf(definitions, keys, findings));
  const std::unordered_set<std::string_view> builtIn = builtInProcedures();
  for (std::size_t i = 0; i < definitions.all().size(); ++i) {
    const Definition& definition = definitions.all()[i];
    const bool isShadowed =
        definition.kind == DefinitionKind::Macro && builtIn.contains(definition.name);
    if (!reached[i] && !isShadowed) complainOfUnused(definition, !keys.empty(), findings);
  }
}

void checkCircles(const Definitions& definitions, const ReferenceGraph& graph, Findings& findings) {
  for (const Circle& circle : findCircles(definitions, graph)) {
    const Use& first = circle.uses.front();
    const ExpressionSite& site = definitions.sites[first.site];
    std::string message = "the " + kindAndName(definitions.all()[circle.start()]) +
                          (circle.isCertain ? " uses itself" : " may use itself") +
                          " without end: " + way(definitions, circle);
    findings.add({{kind::kCircle, circle.isCertain ? Severity::Error : Severity::Warning,
                   std::move(message), "take one of these references out"},
                  site.path,
                  site.expression,
                  first.range});
  }
}

void checkMacroCalls(const Definitions& definitions, const ReferenceCheck& references,
                     Findings& findings) {
  for (const MacroCall& call : references.macroCalls()) {
    const std::optional<std::string> objection =
        references.parameters()[call.macro].objectionTo(call.argumentCount);
    if (!objection) continue;
    const ExpressionSite& site = definitions.sites[call.site];
    const Definition& macro = definitions.all()[call.macro];
    findings.add(
        {{kind::kArgumentCount, Severity::Warning, "the macro " + written(macro) + " " + *objection,
          "give it as many arguments as it reads"},
         site.path,
         site.expression,
         call.range});
  }
}

void checkServices(const Definitions& definitions, const ReferenceCheck& references,
                   Findings& findings) {
  std::vector<std::vector<std::size_t>> users(definitions.all().size());
  for (std::size_t user = 0; user < users.size(); ++user) {
    for (const Use& use : references.graph().uses[user]) {
      // A value has a service of its own.
      const bool isMacro = definitions.all()[use.target].kind == DefinitionKind::Macro;
      if (isMacro) users[use.target].push_back(user);
    }
  }
  std::vector<bool> asks = references.asksService();
  std::vector<std::size_t> waiting;
  for (std::size_t i = 0; i < asks.size(); ++i) {
    if (asks[i]) waiting.push_back(i);
  }
  while (!waiting.empty()) {
    const std::size_t node = waiting.back();
    waiting.pop_back();
    for (const std::size_t user : users[node]) {
      if (!asks[user]) waiting.push_back(user);
      asks[user] = true;
    }
  }
  for (std::size_t i = 0; i < asks.size(); ++i) {
    const Definition& definition = definitions.all()[i];
    const bool isUsual = definition.context == &ADMSingleValueEvaluationContext::kClass ||
                         definition.context == &ADMArrayEvaluationContext::kClass;
    // A plug-in's context may ask it on its own account.
    if (definition.service == nullptr || asks[i] || !isUsual) continue;
    findings.addAtKey(
        definition.service,
        {kind::kIgnoredKey, Severity::Warning,
         "the ServiceName has no effect: nothing in the value asks the service", "take it out"});
  }
}

void checkShadows(const Definitions& definitions, Findings& findings) {
  const std::unordered_set<std::string_view> builtIn = builtInProcedures();
  std::vector<std::pair<const Class*, std::unordered_set<std::string_view>>> contexts;
  for (const Class* context : definitions.contexts()) {
    const std::vector<std::string_view> names = proceduresOf(*context);
    contexts.emplace_back(context,
                          std::unordered_set<std::string_view>(names.begin(), names.end()));
  }
  for (const Definition& definition : definitions.all()) {
    if (definition.kind != DefinitionKind::Macro) continue;
    if (builtIn.contains(definition.name)) {
      findings.addAtKey(definition.path, {kind::kShadowed, Severity::Error,
                                          "the built-in procedure _" + shownName(definition.name) +
                                              " hides the macro of the same name",
                                          "give the macro another name"});
      continue;
    }
    for (const auto& [context, names] : contexts) {
      if (!names.contains(definition.name)) continue;
      findings.addAtKey(definition.path,
                        {kind::kShadowed, Severity::Warning,
                         "in values with the EvaluationContext " + std::string(context->name) +
                             ", its procedure _" + shownName(definition.name) + " hides the macro",
                         "give the macro another name"});
    }
  }
}

}  // namespace commandfilter::tools
