// Values as JSON.
#pragma once

#include <nlohmann/json.hpp>

#include "runtime/Value.h"

namespace commandfilter::tools {

/// The value as JSON. Booleans (numbers of encoding "c" that are 0 or 1) are false and true, the
/// null object and nil are null. Keys that are no strings appear as their descriptions, data as
/// {"$data": base64}, a date as {"$date": ISO 8601 in UTC} and any other object as
/// {"$object": class name}.
/// @throws Exception when the value is nested deeper than the stack allows.
[[nodiscard]] nlohmann::ordered_json toJSON(const Value& value);

}  // namespace commandfilter::tools
