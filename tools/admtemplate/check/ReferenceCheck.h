// The references of expressions.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "check/Definitions.h"
#include "check/Finding.h"
#include "check/InputNames.h"
#include "check/KnownNames.h"
#include "check/MacroParameters.h"
#include "check/ReferenceGraph.h"
#include "check/References.h"

namespace commandfilter::tools {

/// A call of a macro.
struct MacroCall {
  /// The place of the macro among all definitions, and of the expression among all sites.
  std::size_t macro;
  std::size_t site;
  SourceRange range;
  std::size_t argumentCount;
};

/// Complains about references to what is not there, and gathers who uses what.
class ReferenceCheck {
 public:
  /// `input` is nullptr when it is not known. All must outlive this.
  ReferenceCheck(const Definitions& definitions, KnownNames& names, InputNames* input)
      : definitions_(definitions),
        names_(names),
        input_(input),
        contexts_(definitions.contexts()),
        graph_(definitions.all().size()),
        parameters_(definitions.all().size()),
        asksService_(definitions.all().size()) {}

  /// Looks at the references of one expression. Those of a broken one are incomplete.
  [[nodiscard]] std::vector<ExpressionComplaint> check(std::size_t site,
                                                       const std::vector<Reference>& references,
                                                       bool isBroken);

  [[nodiscard]] const ReferenceGraph& graph() const noexcept { return graph_; }
  /// By definition; only those of macros mean anything.
  [[nodiscard]] const std::vector<MacroParameters>& parameters() const noexcept {
    return parameters_;
  }
  /// By definition: true for one that asks the service of the value itself, not only through
  /// macros.
  [[nodiscard]] const std::vector<bool>& asksService() const noexcept { return asksService_; }
  [[nodiscard]] const std::vector<MacroCall>& macroCalls() const noexcept { return macroCalls_; }

 private:
  void checkReference(const Reference& reference);
  void checkConstant(const Reference& reference);
  void checkValue(const Reference& reference, const String* name);
  void checkName(const Reference& reference);
  void checkArgumentName(const Reference& reference, const EvaluationName& name);
  void checkPath(const Reference& reference);
  void checkCall(const Reference& call);
  void checkProcedure(const Reference& call, const Class& context);
  void checkProcedureNames(const Reference& call);
  void checkMethodCall(const Reference& call);
  void checkExternal(const Reference& call);
  void checkInput(const Reference& call);
  void complainOfUnknownProcedure(const Reference& call);

  [[nodiscard]] bool hasProcedure(const Class& context, const String& name) const;
  [[nodiscard]] const Definition& user() const {
    return definitions_.all()[definitions_.sites[site_].definition];
  }
  [[nodiscard]] bool isInConstant() const { return user().kind == DefinitionKind::Constant; }
  // True for an expression that nothing answers names and paths to.
  [[nodiscard]] bool isWithoutService() const;
  void noteService() { asksService_[definitions_.sites[site_].definition] = true; }
  void use(std::size_t target, const Reference& reference);
  void complain(const Reference& reference, std::string_view kind, Severity severity,
                std::string message, std::string remedy);
  void complainOutOfReach(const Reference& reference, std::string_view what);

  const Definitions& definitions_;
  KnownNames& names_;
  InputNames* input_;
  std::vector<const Class*> contexts_;
  ReferenceGraph graph_;
  std::vector<MacroParameters> parameters_;
  std::vector<bool> asksService_;
  std::vector<MacroCall> macroCalls_;
  std::vector<ExpressionComplaint> complaints_;
  std::size_t site_ = 0;
};

}  // namespace commandfilter::tools
