// A template, checked.
#pragma once

#include <string>
#include <vector>

#include "check/Findings.h"
#include "check/InputNames.h"
#include "check/KeyPath.h"
#include "runtime/Dictionary.h"

namespace commandfilter::tools {

/// Everything that is wrong with a template, as far as that is to be seen without a printer. The
/// paths of the findings are kept in `paths`. `input` is nullptr when the input parameters are not
/// known. `keys` names the values that somebody asks for; when it is empty, any may be.
void checkTemplate(const Dictionary& configuration, const std::vector<std::string>& keys,
                   InputNames* input, KeyPaths& paths, Findings& findings);

}  // namespace commandfilter::tools
