// Who uses what in a template.
#pragma once

#include <string>
#include <vector>

#include "check/Definitions.h"
#include "check/Findings.h"
#include "check/ReferenceCheck.h"

namespace commandfilter::tools {

/// Complains about constants and macros that nothing reaches, and about values, too, when `keys`
/// names those that somebody asks for.
void checkUsage(const Definitions& definitions, const ReferenceGraph& graph,
                const std::vector<std::string>& keys, Findings& findings);

/// Complains about definitions that use themselves.
void checkCircles(const Definitions& definitions, const ReferenceGraph& graph, Findings& findings);

/// Complains about calls of macros with arguments that are missing or too many.
void checkMacroCalls(const Definitions& definitions, const ReferenceCheck& references,
                     Findings& findings);

/// Complains about macros that built-in procedures or those of a value's context hide.
void checkShadows(const Definitions& definitions, Findings& findings);

/// Complains about a ServiceName whose service nothing asks.
void checkServices(const Definitions& definitions, const ReferenceCheck& references,
                   Findings& findings);

/// True for a name that an expression can write behind $ or _.
[[nodiscard]] bool isCallableName(std::string_view name);

}  // namespace commandfilter::tools
