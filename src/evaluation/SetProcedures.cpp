// placeholder
#include <array>

#include "evaluation/ProcedureGroups.h"

namespace commandfilter {

constinit const MethodGroup kSetProcedures{"SetProcedures", {}};

}  // namespace commandfilter
