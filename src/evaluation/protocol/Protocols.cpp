// The evaluation protocols as data.
#include "evaluation/protocol/ADMArrayIteration.h"
#include "evaluation/protocol/ADMEvaluationContext.h"
#include "evaluation/protocol/ADMExternalProcedure.h"
#include "evaluation/protocol/ADMNamedValues.h"

namespace commandfilter {

constinit const Protocol ADMEvaluationContext::kProtocol{"ADMEvaluationContext"};
constinit const Protocol ADMArrayIteration::kProtocol{"ADMArrayIteration"};
constinit const Protocol ADMExternalProcedure::kProtocol{"ADMExternalProcedure"};
constinit const Protocol ADMNamedValues::kProtocol{"ADMNamedValues"};

}  // namespace commandfilter
