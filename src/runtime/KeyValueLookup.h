// Values by key, from anything that can be asked for them.
#pragma once

#include "runtime/Export.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A dictionary's entry under the key; an object's answer to `valueForKey:` when it has that
/// method, otherwise to the message without arguments that the key names. nil for nil.
/// @throws Exception when the value can be asked in neither way.
[[nodiscard]] COMMANDFILTER_EXPORT Value valueForKey(const Value& value, const String& key);

}  // namespace commandfilter
