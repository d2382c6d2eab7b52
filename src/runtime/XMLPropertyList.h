// Property lists in XML.
#pragma once

#include <string_view>

#include "runtime/PropertyListObserver.h"
#include "runtime/Result.h"
#include "runtime/Value.h"

namespace commandfilter::detail {

/// Reads a property list from well-formed UTF-8 in XML, in one pass that does not recurse. What
/// refuses it names line and column. The observer may be nullptr.
[[nodiscard]] Result<Value> parseXMLPropertyList(std::string_view text,
                                                 PropertyListObserver* observer);

}  // namespace commandfilter::detail
