#pragma once

#include "comparison/Datum.h"
#include "runtime/Value.h"

namespace commandfilter::benchmarks {

Value toValue(const Datum& datum);
Datum toDatum(const Value& value);

}  // namespace commandfilter::benchmarks
