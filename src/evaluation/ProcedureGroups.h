// The groups of built-in procedures.
#pragma once

#include <span>

#include "runtime/Class.h"

namespace commandfilter {

// One group a source file, which is named after it. The group's table stands at the file's end.
extern const MethodGroup kAggregateProcedure;
extern const MethodGroup kCallMethodProcedure;
extern const MethodGroup kCollectionsProcedures;
extern const MethodGroup kExternalProcedures;
extern const MethodGroup kInputParametersProcedures;
extern const MethodGroup kServiceManipulationProcedures;
extern const MethodGroup kSetProcedures;
extern const MethodGroup kStringProcedures;
extern const MethodGroup kTemplateProcedures;

/// All groups, as the base context's class has them.
[[nodiscard]] std::span<const MethodGroup* const> procedureGroups() noexcept;

}  // namespace commandfilter
