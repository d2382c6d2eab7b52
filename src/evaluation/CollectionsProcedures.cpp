// placeholder
#include <array>

#include "evaluation/ProcedureGroups.h"

namespace commandfilter {

constinit const MethodGroup kCollectionsProcedures{"CollectionsProcedures", {}};

}  // namespace commandfilter
