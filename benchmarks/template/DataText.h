#pragma once

#include <string>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// The data as an XML property list, as its users write them.
std::string propertyListOf(const Datum& datum);

// The data as a Lua expression.
std::string luaOf(const Datum& datum);

}  // namespace commandfilter::benchmarks
