#include "expression/LiteralItem.h"

namespace commandfilter {

Value LiteralItem::evaluate(ADMEvaluationContext& /*context*/) const { return value_; }

}  // namespace commandfilter
