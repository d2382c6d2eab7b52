// An expression and what the checks say about it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "check/Finding.h"
#include "check/LexicalCheck.h"
#include "check/StructureCheck.h"
#include "check/Tokens.h"
#include "expression/CodeUnits.h"

namespace commandfilter::testing {

/// What is said about characters, words and build; each with the part that it points at.
inline std::vector<std::string> complaintsAbout(std::string_view expression) {
  const Ref<String> text = String::create(std::string(expression));
  const tools::Tokens tokens = tools::tokensOf(text);
  const tools::Definitions none;
  tools::KnownNames names(none);
  std::vector<tools::ExpressionComplaint> complaints =
      tools::checkReadability(text->view(), tokens, names);
  for (tools::ExpressionComplaint& complaint : tools::checkStructure(text->view(), tokens)) {
    complaints.push_back(std::move(complaint));
  }
  std::vector<std::string> shown;
  const CodeUnits units(text->view());
  for (const tools::ExpressionComplaint& complaint : complaints) {
    shown.push_back(units.substring(complaint.range.begin, complaint.range.end) + ": " +
                    complaint.complaint.message);
  }
  return shown;
}

}  // namespace commandfilter::testing
