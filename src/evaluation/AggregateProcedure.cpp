// placeholder
#include <array>

#include "evaluation/ProcedureGroups.h"

namespace commandfilter {

constinit const MethodGroup kAggregateProcedure{"AggregateProcedure", {}};

}  // namespace commandfilter
