#include "check/TemplateCheck.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "check/Definitions.h"
#include "check/KnownNames.h"
#include "check/LexicalCheck.h"
#include "check/ReferenceCheck.h"
#include "check/StructureCheck.h"
#include "check/TemplateReader.h"
#include "check/Tokens.h"
#include "check/UsageCheck.h"
#include "evaluation/ADMEvaluationContextBase.h"
#include "expression/ADMEvaluationProcessor.h"
#include "runtime/Cast.h"

namespace commandfilter::tools {

namespace {

// Checks one expression after another.
class ExpressionCheck {
 public:
  ExpressionCheck(const Definitions& definitions, InputNames* input)
      : definitions_(definitions), names_(definitions), references_(definitions, names_, input) {}

  void check(std::size_t site, Findings& findings) {
    const ExpressionSite& place = definitions_.sites[site];
    for (ExpressionComplaint& complaint : complaintsAbout(site)) {
      findings.add({std::move(complaint.complaint), place.path, place.expression, complaint.range});
    }
  }

  [[nodiscard]] const ReferenceCheck& references() const noexcept { return references_; }

 private:
  std::vector<ExpressionComplaint> complaintsAbout(std::size_t site) {
    const ExpressionSite& place = definitions_.sites[site];
    const std::string_view text = place.expression->view();
    const Tokens tokens = tokensOf(place.expression);
    std::vector<ExpressionComplaint> complaints = checkReadability(text, tokens, names_);
    append(complaints, checkStructure(text, tokens));
    RefPtr<ADMEvaluationProcessor> compiled;
    if (complaints.empty()) compiled = compile(place, complaints);
    if (compiled) {
      checkList(place, *compiled->rootItem(), complaints);
      const Class& context = *definitions_.all()[place.definition].context;
      append(complaints,
             references_.check(site, referencesOf(*compiled->rootItem(), context), false));
    } else {
      append(complaints, references_.check(site, referencesOf(tokens), true));
    }
    std::ranges::stable_sort(
        complaints, {}, [](const ExpressionComplaint& complaint) { return complaint.range.begin; });
    return complaints;
  }

  // nil when it does not compile: then something is wrong that no other check has seen.
  static RefPtr<ADMEvaluationProcessor> compile(const ExpressionSite& place,
                                                std::vector<ExpressionComplaint>& complaints) {
    const Ref<ADMEvaluationContextBase> context =
        ADMEvaluationContextBase::initWithStatusService_globalConfiguration(Value(), nullptr);
    Ref<ADMEvaluationProcessor> compiled =
        ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(place.expression,
                                                                                context);
    const ADMEvaluationError* error = context->lastError();
    if (error == nullptr && compiled->rootItem() != nullptr) return compiled;
    const std::size_t end = place.expression->length();
    complaints.push_back(
        {error != nullptr ? error->sourceRange().value_or(SourceRange{end, end})
                          : SourceRange{end, end},
         {kind::kStructure, Severity::Error,
          error != nullptr ? error->errorDescription()->text() : "the expression is empty",
          "put operands, operators and braces where they belong"}});
    return nullptr;
  }

  // A list is not evaluated, and so no array.
  static void checkList(const ExpressionSite& place, const ADMEvaluationItemBase& root,
                        std::vector<ExpressionComplaint>& complaints) {
    using Role = ExpressionSite::Role;
    const bool isResult =
        place.role == Role::Value || place.role == Role::Range || place.role == Role::Filter;
    if (root.type() != ItemType::MakeList || !isResult) return;
    complaints.push_back(
        {root.sourceRange(),
         {kind::kStructure, place.role == Role::Range ? Severity::Error : Severity::Warning,
          "a list that is no procedure's is not evaluated",
          "write _Array(...) around it for an array"}});
  }

  static void append(std::vector<ExpressionComplaint>& all, std::vector<ExpressionComplaint> more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()),
               std::make_move_iterator(more.end()));
  }

  const Definitions& definitions_;
  KnownNames names_;
  ReferenceCheck references_;
};

}  // namespace

void checkTemplate(const Dictionary& configuration, const std::vector<std::string>& keys,
                   InputNames* input, KeyPaths& paths, Findings& findings) {
  const Definitions definitions = readTemplate(configuration, paths, findings);
  ExpressionCheck expressions(definitions, input);
  for (std::size_t site = 0; site < definitions.sites.size(); ++site) {
    expressions.check(site, findings);
  }
  const ReferenceCheck& references = expressions.references();
  checkMacroCalls(definitions, references, findings);
  checkServices(definitions, references, findings);
  checkShadows(definitions, findings);
  checkCircles(definitions, references.graph(), findings);
  checkUsage(definitions, references.graph(), keys, findings);
}

}  // namespace commandfilter::tools
