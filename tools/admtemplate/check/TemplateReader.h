// The parts of a template.
#pragma once

#include "check/Definitions.h"
#include "check/Findings.h"
#include "check/KeyPath.h"
#include "runtime/Dictionary.h"

namespace commandfilter::tools {

/// Finds what the template defines, and complains about keys that are ignored, missing or of the
/// wrong type. The paths are kept in `paths`; the template must outlive all three.
[[nodiscard]] Definitions readTemplate(const Dictionary& configuration, KeyPaths& paths,
                                       Findings& findings);

}  // namespace commandfilter::tools
