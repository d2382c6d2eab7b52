#include "check/ReferenceCheck.h"

#include <algorithm>
#include <utility>

#include "check/ArgumentCountText.h"
#include "check/NameText.h"
#include "evaluation/ADMAggregateEvaluationContext.h"
#include "evaluation/ADMMacrosEvaluationContext.h"
#include "evaluation/ADMSingleValueEvaluationContext.h"
#include "evaluation/ProcedureSignatures.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Selector.h"

namespace commandfilter::tools {

namespace {

using Kind = Reference::Kind;

std::string shownName(const RefPtr<String>& name) { return tools::shownName(textOf(name.get())); }

}  // namespace

std::vector<ExpressionComplaint> ReferenceCheck::check(std::size_t site,
                                                       const std::vector<Reference>& references,
                                                       bool isBroken) {
  site_ = site;
  const std::size_t definition = definitions_.sites[site].definition;
  if (isBroken) {
    // What it would read is not known.
    parameters_[definition].noteAnyNumber();
    noteService();
    graph_.usesAnyValue[definition] = true;
    if (input_ != nullptr) input_->noteAnyRead();
  }
  for (const Reference& reference : references) checkReference(reference);
  return std::exchange(complaints_, {});
}

void ReferenceCheck::checkReference(const Reference& reference) {
  switch (reference.kind) {
    case Kind::Constant:
      return checkConstant(reference);
    case Kind::Value:
      return checkValue(reference, reference.name.get());
    case Kind::Name:
      return checkName(reference);
    case Kind::Path:
      return checkPath(reference);
    case Kind::Call:
      return checkCall(reference);
    case Kind::NoValue:
      return complain(reference, kind::kStructure, Severity::Error, "empty braces have no value",
                      "write @nil for nothing, or take them out");
    case Kind::ListReceiver:
      return complain(reference, kind::kStructure, Severity::Error,
                      "a list cannot stand in front of _" + shownName(reference.name),
                      "write _" + shownName(reference.name) + "(...) with all of them");
    case Kind::EmptyReceiver:
      return complain(reference, kind::kStructure, Severity::Error,
                      "_" + shownName(reference.name) + " is always nil behind empty braces",
                      "write _" + shownName(reference.name) + "() for no arguments");
  }
}

void ReferenceCheck::checkConstant(const Reference& reference) {
  if (isInConstant()) return complainOutOfReach(reference, "another constant");
  const std::string_view name = textOf(reference.name.get());
  if (const auto target = definitions_.find(DefinitionKind::Constant, name)) {
    return use(*target, reference);
  }
  complain(reference, kind::kUndefined, Severity::Error,
           name.empty() ? "a constant has no name"
                        : "the constant $" + shownName(reference.name) + " is not defined",
           names_.remedyForConstant(name));
}

void ReferenceCheck::checkValue(const Reference& reference, const String* name) {
  if (isInConstant()) return complainOutOfReach(reference, "a value");
  const std::string_view text = textOf(name);
  if (const auto target = definitions_.find(DefinitionKind::Value, text)) {
    return use(*target, reference);
  }
  complain(reference, kind::kUndefined, Severity::Error,
           text.empty() ? "a value has no name"
                        : "the value [" + tools::shownName(text) + "] is not defined",
           names_.remedyForValue(text));
}

void ReferenceCheck::checkName(const Reference& reference) {
  const EvaluationName name = EvaluationName::ofSymbol(reference.name);
  switch (name.symbol()) {
    case EvaluationSymbol::Nil:
    case EvaluationSymbol::True:
    case EvaluationSymbol::False:
      return;
    case EvaluationSymbol::Service:
      return noteService();
    case EvaluationSymbol::Argument:
    case EvaluationSymbol::ArgumentCount:
    case EvaluationSymbol::ArgumentList:
    case EvaluationSymbol::NoArgument:
      return checkArgumentName(reference, name);
    case EvaluationSymbol::Element:
    case EvaluationSymbol::Index:
    case EvaluationSymbol::Initial:
      if (reference.context == nullptr ||
          reference.context->isKindOf(ADMAggregateEvaluationContext::kClass)) {
        return;
      }
      break;
    default:
      break;
  }
  if (name.text().empty()) {
    return complain(reference, kind::kStructure, Severity::Error, "a name is missing behind @",
                    "put a name behind it, such as @nil");
  }
  const bool isOfList = name.symbol() == EvaluationSymbol::Element ||
                        name.symbol() == EvaluationSymbol::Identifier ||
                        name.symbol() == EvaluationSymbol::Index;
  const bool isInList = user().context->conformsToProtocol(ADMArrayIteration::kProtocol);
  if (isOfList && isInList) return;
  noteService();
  if (!isWithoutService()) return;
  const std::string_view user = isInConstant() ? "a constant" : "a value without a ServiceName";
  complain(reference, kind::kOutOfReach, Severity::Warning,
           "@" + shownName(reference.name) + " is always nil in " + std::string(user),
           isInConstant() ? "make the constant a macro or a value"
           : isOfList     ? "add a Range whose elements it names"
                          : "add the ServiceName of the service that answers it");
}

void ReferenceCheck::checkArgumentName(const Reference& reference, const EvaluationName& name) {
  if (user().kind != DefinitionKind::Macro) {
    return complain(reference, kind::kOutOfReach, Severity::Warning,
                    "@" + shownName(reference.name) + " is an argument only in a macro",
                    "move the expression into a macro, or name a value, constant or input "
                    "parameter");
  }
  MacroParameters& parameters = parameters_[definitions_.sites[site_].definition];
  if (name.symbol() == EvaluationSymbol::Argument) {
    parameters.noteArgument(name.argumentIndex(), reference.mayBeNil);
  } else if (name.symbol() == EvaluationSymbol::NoArgument) {
    complain(reference, kind::kUndefined, Severity::Warning,
             "@" + shownName(reference.name) + " is always nil in a macro",
             "write @arg0, @arg1 and so on, @argc or @argv; other names must not begin with arg");
  } else {
    parameters.noteAnyNumber();
  }
}

void ReferenceCheck::checkPath(const Reference& reference) {
  noteService();
  if (!isWithoutService()) return;
  complain(reference, kind::kOutOfReach, Severity::Warning,
           isInConstant() ? "a path is always nil in a constant"
                          : "a path is always nil in a value without a ServiceName",
           isInConstant() ? "make the constant a macro or a value"
                          : "add the ServiceName of the service that has the feature");
}

bool ReferenceCheck::isWithoutService() const {
  const Definition& definition = user();
  if (definition.kind == DefinitionKind::Constant) return true;
  // A plug-in's context may answer whatever it likes, and a macro is evaluated where it is called.
  const bool isUsual = definition.context == &ADMSingleValueEvaluationContext::kClass ||
                       definition.context == &ADMArrayEvaluationContext::kClass;
  return definition.kind == DefinitionKind::Value && isUsual && definition.service == nullptr;
}

bool ReferenceCheck::hasProcedure(const Class& context, const String& name) const {
  const EvaluationName procedure =
      EvaluationName::ofProcedure(RefPtr<String>(const_cast<String*>(&name)));  // NOLINT: shared
  return procedure.selector() && context.instanceMethod(*procedure.selector()) != nullptr;
}

void ReferenceCheck::checkCall(const Reference& call) {
  const Class& context = call.context != nullptr ? *call.context : *user().context;
  if (call.name && hasProcedure(context, *call.name)) return checkProcedure(call, context);
  if (!context.isKindOf(ADMEvaluationContextBase::kClass)) {
    // A context that is made otherwise may know procedures by any name.
    return noteService();
  }
  const auto macro = definitions_.find(DefinitionKind::Macro, textOf(call.name.get()));
  if (!macro) return complainOfUnknownProcedure(call);
  if (isInConstant()) return complainOutOfReach(call, "a macro");
  use(*macro, call);
  if (call.argumentCount) macroCalls_.push_back({*macro, site_, call.range, *call.argumentCount});
}

void ReferenceCheck::complainOfUnknownProcedure(const Reference& call) {
  // Whatever is meant may ask it.
  noteService();
  const std::string shown = shownName(call.name);
  if (shown.empty()) {
    return complain(call, kind::kUnknownProcedure, Severity::Error, "a procedure has no name",
                    names_.remedyForProcedure({}));
  }
  const auto owner = std::ranges::find_if(
      contexts_, [&](const Class* context) { return hasProcedure(*context, *call.name); });
  const std::string unknown = "there is no procedure _" + shown;
  if (owner == contexts_.end()) {
    return complain(call, kind::kUnknownProcedure, Severity::Error, unknown,
                    names_.remedyForProcedure(textOf(call.name.get())));
  }
  const std::string_view place = user().kind == DefinitionKind::Macro      ? "in a macro"
                                 : user().kind == DefinitionKind::Constant ? "in a constant"
                                 : call.context == user().context
                                     ? "in this value"
                                     : "in what is evaluated for each element";
  complain(call, kind::kUnknownProcedure, Severity::Error,
           unknown + " " + std::string(place) + "; only values with the EvaluationContext " +
               std::string((*owner)->name) + " have it",
           "call it in such a value, outside of macros and of expressions for elements");
}

void ReferenceCheck::checkProcedure(const Reference& call, const Class& context) {
  const EvaluationName name = EvaluationName::ofProcedure(call.name);
  const bool isBuiltIn = context.instanceMethod(*name.selector()) ==
                         ADMEvaluationContextBase::kClass.instanceMethod(*name.selector());
  const ProcedureSignature* signature = isBuiltIn ? procedureSignature(name.text()) : nullptr;
  const std::string_view text = name.text();
  if (!isBuiltIn || text == "Service" || text == "ServiceValue" || text == "External") {
    noteService();
  }
  // A plug-in's procedure knows itself what it wants.
  if (signature == nullptr || !call.argumentCount) return;
  const std::string form =
      "write _" + std::string(signature->name) + "(" + std::string(signature->arguments) + ")";
  if (!signature->count.accepts(*call.argumentCount)) {
    return complain(call, kind::kArgumentCount, Severity::Error,
                    "_" + std::string(signature->name) + " takes " +
                        argumentCountText(signature->count) + ", not " +
                        std::to_string(*call.argumentCount),
                    form);
  }
  if (*call.argumentCount > signature->count.most) {
    complain(call, kind::kArgumentCount, Severity::Warning,
             "_" + std::string(signature->name) + " takes " + argumentCountText(signature->count) +
                 " and ignores " + std::to_string(*call.argumentCount - signature->count.most) +
                 " more",
             form);
  }
  checkProcedureNames(call);
}

void ReferenceCheck::checkProcedureNames(const Reference& call) {
  const std::string_view name = textOf(call.name.get());
  if (name == "TemplateValue") {
    if (call.firstText) return checkValue(call, call.firstText.get());
    if (isInConstant()) return complainOutOfReach(call, "a value");
    graph_.usesAnyValue[definitions_.sites[site_].definition] = true;
  } else if (name == "InputValue") {
    checkInput(call);
  } else if (name == "External") {
    checkExternal(call);
  } else if (name == "CallMethod") {
    checkMethodCall(call);
  } else if (isInConstant() && (name == "Service" || name == "ServiceValue")) {
    complainOutOfReach(call, "a service");
  }
}

void ReferenceCheck::checkInput(const Reference& call) {
  if (isInConstant()) return complainOutOfReach(call, "an input parameter");
  const std::string_view name = textOf(call.firstText.get());
  if (call.firstText && name.empty()) {
    return complain(call, kind::kUndefined, Severity::Error, "an input parameter has no name",
                    "put its name between the quotes");
  }
  if (input_ == nullptr) return;
  if (!call.firstText) return input_->noteAnyRead();
  if (input_->has(name)) return input_->noteRead(name);
  // One that the expression does without need not be given.
  if (call.mayBeNil) return;
  const std::string_view nearest = input_->nearest(name);
  complain(
      call, kind::kUndefined, Severity::Error,
      "the input parameter " + tools::shownName(name) + " is not given",
      nearest.empty() ? "give it with the others" : "write \"" + tools::shownName(nearest) + "\"");
}

void ReferenceCheck::checkExternal(const Reference& call) {
  if (!call.firstText) return;
  const std::string_view name = textOf(call.firstText.get());
  if (name.empty()) {
    return complain(call, kind::kUnknownProcedure, Severity::Error,
                    "an external procedure has no name", "put its name between the quotes");
  }
  if (classNamed("A" + std::string(name) + "ExternalProcedure") != nullptr) return;
  complain(call, kind::kUnknownProcedure, Severity::Warning,
           "there is no external procedure " + tools::shownName(name),
           names_.remedyForExternal(name));
}

void ReferenceCheck::checkMethodCall(const Reference& call) {
  if (!call.secondText) return;
  const std::string_view method = textOf(call.secondText.get());
  if (method.empty()) {
    return complain(call, kind::kArgumentCount, Severity::Error, "a method has no name",
                    "put its name between the quotes");
  }
  const auto colons = static_cast<std::size_t>(std::ranges::count(method, ':'));
  const std::size_t given = *call.argumentCount - 2;
  if (given == colons) return;
  const std::string_view plural = colons == 1 ? " argument, not " : " arguments, not ";
  complain(call, kind::kArgumentCount, Severity::Error,
           "the method " + tools::shownName(method) + " takes " + std::to_string(colons) +
               std::string(plural) + std::to_string(given),
           "give _CallMethod one argument for each colon of the method, behind its name");
}

void ReferenceCheck::use(std::size_t target, const Reference& reference) {
  graph_.uses[definitions_.sites[site_].definition].push_back(
      {target, site_, reference.range,
       reference.isCertain && definitions_.sites[site_].isAlwaysEvaluated});
}

void ReferenceCheck::complainOutOfReach(const Reference& reference, std::string_view what) {
  complain(reference, kind::kOutOfReach, Severity::Error,
           "a constant cannot reach " + std::string(what) + ", which is nil there",
           "write out what it stands for, or make the constant a macro");
}

void ReferenceCheck::complain(const Reference& reference, std::string_view kind, Severity severity,
                              std::string message, std::string remedy) {
  complaints_.push_back({reference.range, {kind, severity, std::move(message), std::move(remedy)}});
}

}  // namespace commandfilter::tools
