// Counts of arguments in messages.
#pragma once

#include <string>

#include "evaluation/ProcedureSignatures.h"

namespace commandfilter::tools {

/// "1 argument", "2 or 3 arguments", "2 arguments or more", "an even number of arguments".
[[nodiscard]] inline std::string argumentCountText(const ArgumentCount& count) {
  if (count.inPairs) return "an even number of arguments";
  if (count.most == 0) return "no arguments";
  const std::string least = std::to_string(count.least);
  if (count.most == ArgumentCount::kAnyNumber) {
    if (count.least == 0) return "any number of arguments";
    return least + (count.least == 1 ? " argument" : " arguments") + " or more";
  }
  const std::string text =
      count.least == count.most ? least : least + " or " + std::to_string(count.most);
  return text + (count.most == 1 ? " argument" : " arguments");
}

}  // namespace commandfilter::tools
