// Carries out template cases.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "template/TemplateCaseFile.h"

namespace commandfilter::testing {

/// Something that is not as a case says.
struct TemplateDifference {
  std::size_t line;
  std::string what;
};

/// Makes a processor for the template and carries out its steps.
[[nodiscard]] std::vector<TemplateDifference> differencesOf(const TemplateCase& tested);

}  // namespace commandfilter::testing
